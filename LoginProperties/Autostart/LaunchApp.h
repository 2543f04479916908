#pragma once

#include <windows.h>

#include "LoginProperties/Autostart/RegAppItem.h"

/// Starts a program, or opens a document, a folder or a web address in its program: `item.command` with `parameters` in
/// `directory`, both as they are and both may be null. `showCommand` is one of SW_... . An item with a `urlTemplate` is
/// Microsoft Edge, which is activated with the parameters alone. False when nothing was started, of which the user is
/// not told. `launchTime`, when not null, receives the time just before the start.
bool LaunchApp(const RegAppItem& item, int showCommand, const wchar_t* parameters = nullptr,
               const wchar_t* directory = nullptr, FILETIME* launchTime = nullptr);
