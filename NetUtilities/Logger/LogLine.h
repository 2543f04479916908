#pragma once

#include <cstdint>
#include <string>

#include "NetUtilities/Logger/Log.h"

/// Number of log sources; a source is a number below it.
inline constexpr uint16_t kLogSourceCount = 37;

/// A moment of the local time, to the millisecond. The year does not appear in log lines.
struct LogTime {
  unsigned month;  // 1 to 12
  unsigned day;    // 1 to 31
  unsigned hour;
  unsigned minute;
  unsigned second;
  unsigned millisecond;
};

/// One message on its way to the logging service.
struct LogRecord {
  LogSource source;
  LogLevel level;
  std::wstring text;  // the complete line: prefix and message, without a line end
};

/// The start of every log line: local time, process id and thread id, closed by ": ".
std::wstring LogLinePrefix(const LogTime& time, uint32_t processId, uint32_t threadId);

/// Whether a message of `level` is logged. A source threshold of 0 means that the global one applies.
bool PassesLogFilter(LogLevel level, uint16_t sourceThreshold, uint16_t globalThreshold);
