#pragma once

#include <windows.h>

#include <ole2.h>
#include <oleauto.h>

/// The platform's functions behind ConnectTraceLogManager and the service that it returns. Tests put others in their
/// place.
struct TraceLogPlatform {
  decltype(&CoCreateInstance) createInstance = CoCreateInstance;
  decltype(&OleRun) run = OleRun;
  decltype(&SysAllocStringLen) allocateText = SysAllocStringLen;
};

extern TraceLogPlatform traceLogPlatform;
