#pragma once

#include <windows.h>

/// From now on a check box without a text shows that it has the keyboard focus: the system draws the frame for the
/// focus round the text alone.
void ShowFocusOf(HWND checkBox);
