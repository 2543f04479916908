#pragma once

#include <windows.h>

#include <optional>
#include <string>

/// Lets the user choose a program or file, in the system's dialog over `owner`; nothing when it is cancelled, or fails,
/// which the user is told.
std::optional<std::wstring> ChooseFile(HWND owner);
