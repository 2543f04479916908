#include "NetUtilities/Text/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "NetUtilities/Text/Surrogates.h"

namespace {

void AppendUtf8(std::string& utf8, uint32_t codePoint) {
  const auto append = [&utf8](uint32_t byte) { utf8 += static_cast<char>(byte); };
  if (codePoint < 0x80) {
    append(codePoint);
  } else if (codePoint < 0x800) {
    append(0xC0 | (codePoint >> 6));
    append(0x80 | (codePoint & 0x3F));
  } else if (codePoint < 0x10000) {
    append(0xE0 | (codePoint >> 12));
    append(0x80 | ((codePoint >> 6) & 0x3F));
    append(0x80 | (codePoint & 0x3F));
  } else {
    append(0xF0 | (codePoint >> 18));
    append(0x80 | ((codePoint >> 12) & 0x3F));
    append(0x80 | ((codePoint >> 6) & 0x3F));
    append(0x80 | (codePoint & 0x3F));
  }
}

// Length of the well-formed sequence at the start of `utf8` and its code point; length 0 when there is none.
struct Decoded {
  size_t length;
  uint32_t codePoint;
};

Decoded DecodeUtf8(std::string_view utf8) {
  const auto byte = [utf8](size_t index) { return static_cast<uint32_t>(static_cast<unsigned char>(utf8[index])); };
  const uint32_t first = byte(0);
  if (first < 0x80) return {1, first};
  const size_t length = first >= 0xF0 && first < 0xF5   ? 4
                        : first >= 0xE0 && first < 0xF0 ? 3
                        : first >= 0xC2 && first < 0xE0 ? 2
                                                        : 0;
  if (length == 0 || utf8.size() < length) return {0, 0};
  uint32_t codePoint = first & (0x7Fu >> length);
  for (size_t index = 1; index < length; ++index) {
    if ((byte(index) & 0xC0) != 0x80) return {0, 0};
    codePoint = (codePoint << 6) | (byte(index) & 0x3F);
  }
  constexpr std::array<uint32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
  const bool wellFormed = codePoint >= kSmallest[length] && codePoint <= kLastCharacter && !IsSurrogate(codePoint);
  return wellFormed ? Decoded{length, codePoint} : Decoded{0, 0};
}

}  // namespace

std::string ToUtf8(std::wstring_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (size_t index = 0; index < text.size(); ++index) {
    const auto unit = static_cast<uint32_t>(text[index]);
    const bool paired =
        IsHighSurrogate(unit) && index + 1 < text.size() && IsLowSurrogate(static_cast<uint32_t>(text[index + 1]));
    if (paired) {
      AppendUtf8(utf8, OfSurrogates(unit, static_cast<uint32_t>(text[++index])));
    } else {
      AppendUtf8(utf8, IsSurrogate(unit) || unit > kLastCharacter ? uint32_t{'_'} : unit);
    }
  }
  return utf8;
}

std::wstring FromUtf8(std::string_view utf8) {
  std::wstring text;
  text.reserve(utf8.size());
  while (!utf8.empty()) {
    const Decoded decoded = DecodeUtf8(utf8);
    AppendCharacter(text, decoded.length == 0 ? kReplacementCharacter : decoded.codePoint);
    utf8.remove_prefix(std::max<size_t>(decoded.length, 1));
  }
  return text;
}
