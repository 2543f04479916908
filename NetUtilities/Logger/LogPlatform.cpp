#include "NetUtilities/Logger/LogPlatform.h"

#include <windows.h>

#include <objbase.h>
#include <x86intrin.h>

#include "NetUtilities/Logger/LogOutputHelper.h"
#include "NetUtilities/Logger/TraceLogService.h"
#include "NetUtilities/Module/OwnModule.h"
#include "NetUtilities/Registry/TraceFlags.h"
#include "NetUtilities/Text/ErrorText.h"
#include "NetUtilities/Text/Format.h"

namespace {

LogTime LocalTime() {
  SYSTEMTIME time{};
  GetLocalTime(&time);
  return {time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond, time.wMilliseconds};
}

std::chrono::nanoseconds SteadyTime() { return std::chrono::steady_clock::now().time_since_epoch(); }

std::wstring ModuleLabel() { return Format(L"{} -> {}", ModuleFileName(nullptr), ModuleFileName(OwnModule())); }

}  // namespace

LogPlatform logPlatform = {
    .localTime = LocalTime,
    .ticks = [] { return uint64_t{__rdtsc()}; },
    .processId = [] { return uint32_t{GetCurrentProcessId()}; },
    .threadId = [] { return uint32_t{GetCurrentThreadId()}; },
    .traceLevel = GetTraceLevel,
    .isTraceFlagSet = IsTraceFlagSet,
    .steadyTime = SteadyTime,
    .enterServiceThread = [] { return int32_t{CoInitializeEx(nullptr, COINIT_MULTITHREADED)}; },
    .leaveServiceThread = CoUninitialize,
    .connect = ConnectTraceLogManager,
    .reportToFile = [](std::wstring_view line) { LogOutputHelper::GetLogOutput(LogOutput::File)(line); },
    .reportToDebugger = [](std::wstring_view line) { LogOutputHelper::GetLogOutput(LogOutput::Debugger)(line); },
    .errorText = SystemErrorText,
    .errorSuffix = ErrorSuffix,
    .moduleLabel = ModuleLabel,
};
