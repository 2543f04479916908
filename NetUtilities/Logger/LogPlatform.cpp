#include "NetUtilities/Logger/LogPlatform.h"

#include <windows.h>

#include "NetUtilities/Logger/LogOutputHelper.h"
#include "NetUtilities/TraceFlags.h"

namespace {

LogTime LocalTime() {
  SYSTEMTIME time{};
  GetLocalTime(&time);
  return {time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond, time.wMilliseconds};
}

std::chrono::nanoseconds SteadyTime() { return std::chrono::steady_clock::now().time_since_epoch(); }

void Deliver(const LogRecord& record) { LogOutputHelper::GetLogOutput(LogOutput::Debugger)(record.text); }

}  // namespace

LogPlatform logPlatform = {
    LocalTime,
    [] { return uint32_t{GetCurrentProcessId()}; },
    [] { return uint32_t{GetCurrentThreadId()}; },
    GetTraceLevel,
    Deliver,
    IsTraceFlagSet,
    SteadyTime,
};
