#include "NetUtilities/Text/Utf16.h"

#include <cstdint>

#include "NetUtilities/Text/Surrogates.h"

std::u16string ToUtf16(std::wstring_view text) {
  std::u16string units;
  units.reserve(text.size());
  for (const wchar_t character : text) {
    const auto code = static_cast<uint32_t>(character);
    AppendCharacter(units, code <= kLastCharacter ? code : kReplacementCharacter);
  }
  return units;
}

std::wstring FromUtf16(std::u16string_view units) {
  if (sizeof(wchar_t) == sizeof(char16_t)) return {units.begin(), units.end()};
  std::wstring text;
  text.reserve(units.size());
  for (size_t index = 0; index < units.size(); ++index) {
    uint32_t character = units[index];
    const uint32_t next = index + 1 < units.size() ? units[index + 1] : 0;
    if (IsHighSurrogate(character) && IsLowSurrogate(next)) {
      character = OfSurrogates(character, next);
      ++index;
    }
    AppendCharacter(text, character);
  }
  return text;
}

std::wstring FromUtf16(const void* units) {
  return units == nullptr ? std::wstring() : FromUtf16(std::u16string_view(static_cast<const char16_t*>(units)));
}
