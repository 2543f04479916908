#pragma once

#include <cstdint>
#include <string>

/// Unit names as the texts use them; below 2 a number takes the singular.
struct DurationUnits {
  std::wstring hour, hours;
  std::wstring minute, minutes;
  std::wstring second, seconds;
};

/// As DurationUnits, for numbers of bytes.
struct ByteUnits {
  std::wstring byte, bytes;
  std::wstring kilobyte, kilobytes;
  std::wstring megabyte, megabytes;
};

/// A value as the page shows it. Values are stored with a sign that says whether their rule is on; shown is the
/// magnitude.
struct FormattedValue {
  std::wstring text;
  int64_t magnitude;
};

/// Hours, minutes and seconds of a duration in seconds, run together: " 1 hour30 minutes". Zero gives empty text.
FormattedValue FormatDuration(int64_t seconds, const DurationUnits& units);

/// A number of bytes in the largest decimal unit that it fills, rounded down: "  1 KByte".
FormattedValue FormatByteCount(int64_t bytes, const ByteUnits& units);
