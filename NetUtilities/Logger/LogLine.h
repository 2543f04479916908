#pragma once

#include <cstdint>
#include <string>

#include "NetUtilities/Logger/Log.h"

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

/// Appends the start of every log line: local time, process id and thread id, closed by ": ".
void AppendLogLinePrefix(std::wstring& line, const LogTime& time, uint32_t processId, uint32_t threadId);

/// That start as a text of its own.
std::wstring LogLinePrefix(const LogTime& time, uint32_t processId, uint32_t threadId);
