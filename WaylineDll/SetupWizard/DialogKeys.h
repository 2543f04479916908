#pragma once

#include <windows.h>

/// From now on an edit control of several lines leaves Enter, Escape and Tab to the dialog, and is not selected as a
/// whole when it gets the focus. By itself it would take these keys and do nothing, as the default button and Cancel
/// are not on its page.
void LeaveKeysToDialog(HWND edit);
