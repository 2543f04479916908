#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

/// A moment of the local time, to the millisecond. The year does not appear in log lines.
struct LogTime {
  unsigned month;  // 1 to 12
  unsigned day;    // 1 to 31
  unsigned hour;
  unsigned minute;
  unsigned second;
  unsigned millisecond;
};

inline constexpr size_t kLongestLogLinePrefix = 38;

/// Writes the start of every log line: local time, process id and thread id, closed by ": ". Returns its length.
size_t WriteLogLinePrefix(std::span<wchar_t, kLongestLogLinePrefix> prefix, const LogTime& time, uint32_t processId,
                          uint32_t threadId);

/// That start as a text of its own.
std::wstring LogLinePrefix(const LogTime& time, uint32_t processId, uint32_t threadId);
