#pragma once

#include <cstdint>

#include "NetUtilities/Logger/LogLine.h"

/// What the Logger needs of the machine. Production values are in LogPlatform.cpp; tests put others in their place.
struct LogPlatform {
  LogTime (*localTime)();
  uint32_t (*processId)();
  uint32_t (*threadId)();
  uint16_t (*traceLevel)();                  // the level set for this machine, asked once
  void (*deliver)(const LogRecord& record);  // sends one line on its way
};

extern LogPlatform logPlatform;
