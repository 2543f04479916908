#pragma once

#include <windows.h>

/// From now on an edit control of one line takes from a text that is pasted what PastedText takes. By itself it would
/// take nothing of a text that begins with the end of a line.
void TrimPastes(HWND edit);
