#pragma once

#include <vector>

#include "LoginProperties/Autostart/RegAppItem.h"

// For the sheet's thread: the browsers that are registered are one list for the process.

/// Reads anew which browsers are registered on the machine. From Windows 10 on Microsoft Edge is always among them. The
/// list is valid until the next call.
const std::vector<RegAppItem>& FindBrowsers();

/// The user's default program for a protocol of at most 14 characters, "http" when it is null or empty, or for the
/// files with an extension, which begins with ".". Empty when there is none, or it is no registered browser; the former
/// is logged, and the browsers are read anew.
RegAppItem GetDefaultBrowserApp(const wchar_t* protocol = nullptr);
