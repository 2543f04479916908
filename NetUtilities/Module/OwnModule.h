#pragma once

#include <windows.h>

#include <string>

/// The handle of the module that this code is linked into: the DLL's own, not that of the process.
HMODULE OwnModule();

/// Name of a module's file without its folder; that of the process's program for a null handle.
std::wstring ModuleFileName(HMODULE module);

/// Name of this module's file without folder and extension.
std::wstring OwnModuleBaseName();
