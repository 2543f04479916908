#pragma once

#include <cstdint>
#include <span>

#include "Database/Profiles/PreferenceId.h"

/// A preference, and what it is where nobody has stored it: on or off, or in a choice none of the options.
struct BuiltInPreference {
  PreferenceId id;
  int32_t value;  // as Preference::GetValue
};

/// All preferences that the client has, in ascending order.
std::span<const BuiltInPreference> BuiltInPreferences();
