#pragma once

#include <memory>
#include <string>

#include "LoginProperties/LoginPropertiesContext.h"

/// Ids of the profiles that MakeContext makes.
inline constexpr uint32_t kRoot = 1;         // "Default", the parent of all others
inline constexpr uint32_t kWork = 2001;      // "Work", the current profile
inline constexpr uint32_t kWork2 = 2002;     // "Work 2"
inline constexpr uint32_t kHidden = 2003;    // "Hidden", not shown
inline constexpr uint32_t kHome = 2004;      // "Home"
inline constexpr uint32_t kNameless = 2005;  // without a name, not shown

/// A context with a few profiles that follow the defaults.
LoginPropertiesContext MakeContext(SheetMode mode = SheetMode::Full);
