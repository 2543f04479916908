#pragma once

#include <windows.h>

#include <cstdint>

#include "WaylineDll/Api.h"

/// Opens the client's help at a topic, in the user's browser; a topic without a page opens the table of contents. When
/// no help can be opened, says so in a message box over `parent` (which may be null). `command` is passed as 15.
WAYLINE_API void DisplayHelp(uint32_t topic, HWND parent, uint32_t command);
