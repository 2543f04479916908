#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "NetUtilities/Logger/LogLine.h"
#include "NetUtilities/Logger/LogService.h"

/// What the Logger and the trace scopes need of the machine. Production values are in LogPlatform.cpp; tests put others
/// in their place.
struct LogPlatform {
  LogTime (*localTime)();
  uint64_t (*ticks)();  // a counter that costs next to nothing to read and runs at 1 GHz or more
  uint32_t (*processId)();
  uint32_t (*threadId)();
  uint16_t (*traceLevel)();  // the level set for this machine
  bool (*isTraceFlagSet)(unsigned bit);
  std::chrono::nanoseconds (*steadyTime)();  // since some moment in the past

  int32_t (*enterServiceThread)();                          // makes the calling thread fit for the service; an HRESULT
  void (*leaveServiceThread)();                             // undoes that
  std::unique_ptr<LogService> (*connect)(int32_t& result);  // null on failure, with the HRESULT

  void (*reportToFile)(std::wstring_view line);      // the Logger's reports about itself
  void (*reportToDebugger)(std::wstring_view line);  // those that belong there only
  std::wstring (*errorText)(uint32_t code);
  std::wstring (*errorSuffix)(int32_t code);
  std::wstring (*moduleLabel)();  // "HOST -> MODULE", the file names of process and module
};

extern LogPlatform logPlatform;
