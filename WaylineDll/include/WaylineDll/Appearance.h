#pragma once

#include <windows.h>

#include "WaylineDll/Api.h"

/// Centres `window` over `reference`, or over the work area of its monitor when `reference` is null, and keeps it on
/// the monitor.
WAYLINE_API void CenterWindow(HWND window, HWND reference);

/// The client's proportional font. Shared: not to be deleted.
WAYLINE_API HFONT GetProportionalFont();
