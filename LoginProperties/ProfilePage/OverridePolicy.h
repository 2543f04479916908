#pragma once

#include <string>

/// Whether an administrator's policy resets a page to the defaults. Shift and Ctrl held together suspend it.
bool PolicyHolds(unsigned disableOverride, bool shiftDown, bool ctrlDown);

/// The key below HKEY_LOCAL_MACHINE that holds a page's policy.
std::wstring PolicyKeyOf(const std::wstring& pageName);

/// The value that holds it, a DWORD.
inline constexpr wchar_t kDisableOverrideValue[] = L"disableOverride";
