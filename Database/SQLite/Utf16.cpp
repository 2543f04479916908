#include "Database/SQLite/Utf16.h"

#include <cstdint>

std::u16string ToUtf16(std::wstring_view text) {
  constexpr uint32_t kFirstWithTwoUnits = 0x10000;
  constexpr uint32_t kLastCharacter = 0x10FFFF;
  constexpr char16_t kReplacementCharacter = 0xFFFD;
  std::u16string units;
  units.reserve(text.size());
  for (const wchar_t character : text) {
    const auto code = static_cast<char32_t>(character);
    if (code < kFirstWithTwoUnits) {
      units += static_cast<char16_t>(code);
    } else if (code <= kLastCharacter) {
      units += static_cast<char16_t>(0xD800 + ((code - kFirstWithTwoUnits) >> 10));
      units += static_cast<char16_t>(0xDC00 + ((code - kFirstWithTwoUnits) & 0x3FF));
    } else {
      units += kReplacementCharacter;
    }
  }
  return units;
}

std::wstring FromUtf16(std::u16string_view units) {
  if (sizeof(wchar_t) == sizeof(char16_t)) return {units.begin(), units.end()};
  std::wstring text;
  text.reserve(units.size());
  for (size_t index = 0; index < units.size(); ++index) {
    const uint32_t unit = units[index];
    const uint32_t next = index + 1 < units.size() ? units[index + 1] : 0;
    const bool paired = unit >= 0xD800 && unit <= 0xDBFF && next >= 0xDC00 && next <= 0xDFFF;
    if (paired) {
      text += static_cast<wchar_t>(0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
      ++index;
    } else {
      text += static_cast<wchar_t>(unit);
    }
  }
  return text;
}

std::wstring FromUtf16(const void* units) {
  return units == nullptr ? std::wstring() : FromUtf16(std::u16string_view(static_cast<const char16_t*>(units)));
}
