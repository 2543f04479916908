#pragma once

#include <windows.h>

#include <cstdint>
#include <string_view>

#include "WaylineDll/Api.h"
#include "WaylineDll/ModuleId.h"

// Modal message boxes over `parent`, titled with the product's name. The text is string `id` of `module` with "%1",
// "%2" and "%3" replaced by the substitutions; empty views stand for none.

/// An error; returns when the user has closed it.
WAYLINE_API void DisplayError(HWND parent, ModuleId module, unsigned id, std::wstring_view first,
                              std::wstring_view second, std::wstring_view third);

/// An information; returns when the user has closed it.
WAYLINE_API void DisplayMessage(HWND parent, ModuleId module, unsigned id, std::wstring_view first,
                                std::wstring_view second);

/// A question; nonzero for Yes.
WAYLINE_API int AskYesNo(HWND parent, ModuleId module, unsigned id, std::wstring_view first, std::wstring_view second);
