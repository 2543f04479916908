#pragma once

#include <windows.h>

#include <string>

#include "LoginProperties/Autostart/EntryTexts.h"

/// Whether a name is that of entries which start the default browser, whatever program they name.
bool IsDefaultBrowserEntry(const std::wstring& name);

/// Starts what an entry would start, with the index of its initial size; tells the user, over `owner`, when there is no
/// such program.
void StartOnTrial(HWND owner, EntryTexts texts, int initialSize);
