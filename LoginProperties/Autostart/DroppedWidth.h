#pragma once

#include <windows.h>

/// Makes the list of a combo box wide enough for its longest item, as far as the screen goes.
void FitDroppedWidth(HWND combo);
