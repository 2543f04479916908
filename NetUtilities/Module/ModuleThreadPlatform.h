#pragma once

#include <windows.h>

/// The platform's functions behind ThreadPlatform::start that a test cannot make fail. Tests put others in their place.
struct ModuleThreadPlatform {
  decltype(&GetModuleHandleExW) moduleHandle = GetModuleHandleExW;
  decltype(&CreateThread) createThread = CreateThread;
};

extern ModuleThreadPlatform moduleThreadPlatform;
