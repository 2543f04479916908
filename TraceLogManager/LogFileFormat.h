#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The form of the log files: UTF-8 without a byte-order mark, lines ended by CR LF. A record is one line,
//
//   28 2 11/15 06:10:17.042 01a2c-0f3b8: text
//
// which is the number of the source in two places, the level, and the text as the client sent it. Where the text has
// line breaks, its further lines follow as lines of their own, set in so that none of them looks like a record.

/// A day of the local calendar.
struct LogDate {
  unsigned year;
  unsigned month;  // 1 to 12
  unsigned day;    // 1 to 31
  bool operator==(const LogDate&) const = default;
};

/// Name of a day's log file, without its folder.
std::wstring LogFileName(const LogDate& date);

/// A record with its line ends, as it is appended to the file. Line breaks at the end of `text` are left out; other
/// control characters than tabs become U+FFFD.
std::string LogFileRecord(uint32_t source, uint32_t level, std::wstring_view text);

/// One line that was read from a log file.
struct LogFileLine {
  bool beginsRecord;      // otherwise it continues the one before
  uint32_t source;        // 0 in a line that continues
  uint32_t level;         // 0 in a line that continues
  std::string_view text;  // UTF-8; points into the line
};

/// Reads a line, given without its line end. What is no record continues one, whatever it is.
LogFileLine ParseLogFileLine(std::string_view line);
