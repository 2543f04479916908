#pragma once

#include <windows.h>

/// The handle of the module that this code is linked into: the DLL's own, not that of the process.
HMODULE OwnModule();
