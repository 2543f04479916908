#pragma once

#include <chrono>
#include <cstdint>

#include "NetUtilities/Logger/LogLine.h"

/// What the Logger and the trace scopes need of the machine. Production values are in LogPlatform.cpp; tests put others
/// in their place.
struct LogPlatform {
  LogTime (*localTime)();
  uint32_t (*processId)();
  uint32_t (*threadId)();
  uint16_t (*traceLevel)();                  // the level set for this machine, asked once
  void (*deliver)(const LogRecord& record);  // sends one line on its way
  bool (*isTraceFlagSet)(unsigned bit);
  std::chrono::nanoseconds (*steadyTime)();  // since some moment in the past
};

extern LogPlatform logPlatform;
