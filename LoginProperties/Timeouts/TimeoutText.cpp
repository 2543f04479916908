#include "LoginProperties/Timeouts/TimeoutText.h"

#include <cstdlib>

#include "NetUtilities/Text/Format.h"

namespace {

const std::wstring& UnitFor(int64_t number, const std::wstring& singular, const std::wstring& plural) {
  return number < 2 ? singular : plural;
}

void AppendDurationPart(std::wstring& text, int64_t number, const std::wstring& singular, const std::wstring& plural) {
  if (number != 0) text += Format(L"{:2d} {}", number, UnitFor(number, singular, plural));
}

std::wstring ByteText(int64_t number, const std::wstring& singular, const std::wstring& plural) {
  return Format(L"{:3d} {}", number, UnitFor(number, singular, plural));
}

}  // namespace

FormattedValue FormatDuration(int64_t seconds, const DurationUnits& units) {
  constexpr int64_t kPerMinute = 60;
  constexpr int64_t kPerHour = 3600;
  const int64_t magnitude = std::abs(seconds);
  std::wstring text;
  AppendDurationPart(text, magnitude / kPerHour, units.hour, units.hours);
  AppendDurationPart(text, magnitude % kPerHour / kPerMinute, units.minute, units.minutes);
  AppendDurationPart(text, magnitude % kPerMinute, units.second, units.seconds);
  return {std::move(text), magnitude};
}

FormattedValue FormatByteCount(int64_t bytes, const ByteUnits& units) {
  constexpr int64_t kPerKilobyte = 1000;
  constexpr int64_t kPerMegabyte = 1000000;
  const int64_t magnitude = std::abs(bytes);
  if (magnitude < kPerKilobyte) return {ByteText(magnitude, units.byte, units.bytes), magnitude};
  if (magnitude >= kPerMegabyte) {
    return {ByteText(magnitude / kPerMegabyte, units.megabyte, units.megabytes), magnitude};
  }
  return {ByteText(magnitude / kPerKilobyte, units.kilobyte, units.kilobytes), magnitude};
}
