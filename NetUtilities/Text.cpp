#include "NetUtilities/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cwctype>

namespace {

wchar_t LowerAscii(wchar_t character) {
  return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character - L'A' + L'a') : character;
}

wchar_t LowerWide(wchar_t character) { return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(character))); }

template <typename Lower>
bool Contains(std::wstring_view haystack, std::wstring_view needle, Lower lower) {
  return std::search(haystack.begin(), haystack.end(), needle.begin(), needle.end(),
                     [lower](wchar_t left, wchar_t right) { return lower(left) == lower(right); }) != haystack.end();
}

constexpr uint32_t kReplacementCharacter = 0xFFFD;

bool IsHighSurrogate(uint32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(uint32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
uint32_t OfSurrogates(uint32_t high, uint32_t low) { return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00); }

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

void AppendWide(std::wstring& text, uint32_t codePoint) {
  if (sizeof(wchar_t) == 2 && codePoint >= 0x10000) {
    text += static_cast<wchar_t>(0xD800 + ((codePoint - 0x10000) >> 10));
    text += static_cast<wchar_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF));
  } else {
    text += static_cast<wchar_t>(codePoint);
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
  const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
  return codePoint < kSmallest[length] || codePoint > 0x10FFFF || surrogate ? Decoded{0, 0}
                                                                            : Decoded{length, codePoint};
}

// `firstByte` is the place in each unit, 0 or 1, of its more significant byte.
std::wstring FromUtf16Bytes(std::string_view bytes, size_t firstByte) {
  const auto byte = [bytes](size_t index) { return static_cast<uint32_t>(static_cast<unsigned char>(bytes[index])); };
  const auto unit = [&](size_t index) { return byte(2 * index + firstByte) << 8 | byte(2 * index + 1 - firstByte); };
  const size_t count = bytes.size() / 2;
  std::wstring text;
  text.reserve(count);
  for (size_t index = 0; index < count; ++index) {
    uint32_t codePoint = unit(index);
    if (IsHighSurrogate(codePoint) && index + 1 < count && IsLowSurrogate(unit(index + 1))) {
      codePoint = OfSurrogates(codePoint, unit(++index));
    } else if (IsHighSurrogate(codePoint) || IsLowSurrogate(codePoint)) {
      codePoint = kReplacementCharacter;
    }
    AppendWide(text, codePoint);
  }
  if (bytes.size() % 2 != 0) AppendWide(text, kReplacementCharacter);
  return text;
}

}  // namespace

bool StringToBool(std::wstring_view text) {
  constexpr std::array<std::wstring_view, 4> kTrueWords = {L"true", L"yes", L"y", L"t"};
  return std::any_of(kTrueWords.begin(), kTrueWords.end(),
                     [text](std::wstring_view word) { return EqualsNoCaseAscii(text, word); });
}

bool ContainsNoCase(std::wstring_view haystack, std::wstring_view needle) {
  return !needle.empty() && Contains(haystack, needle, LowerWide);
}

bool ContainsNoCaseAscii(std::wstring_view haystack, std::wstring_view needle) {
  return !haystack.empty() && Contains(haystack, needle, LowerAscii);
}

bool EqualsNoCaseAscii(std::wstring_view left, std::wstring_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](wchar_t a, wchar_t b) { return LowerAscii(a) == LowerAscii(b); });
}

std::vector<std::wstring> SplitNonEmpty(std::wstring_view text, std::wstring_view separators) {
  std::vector<std::wstring> pieces;
  while (!text.empty()) {
    const size_t end = std::min(text.find_first_of(separators), text.size());
    if (end > 0) pieces.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return pieces;
}

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
      AppendUtf8(utf8, IsHighSurrogate(unit) || IsLowSurrogate(unit) || unit > 0x10FFFF ? uint32_t{'_'} : unit);
    }
  }
  return utf8;
}

std::wstring FromUtf8(std::string_view utf8) {
  std::wstring text;
  text.reserve(utf8.size());
  while (!utf8.empty()) {
    const Decoded decoded = DecodeUtf8(utf8);
    AppendWide(text, decoded.length == 0 ? kReplacementCharacter : decoded.codePoint);
    utf8.remove_prefix(std::max<size_t>(decoded.length, 1));
  }
  return text;
}

std::wstring DecodeText(std::string_view bytes) {
  constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
  constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
  constexpr std::string_view kBigEndianMark = "\xFE\xFF";
  if (bytes.starts_with(kLittleEndianMark)) return FromUtf16Bytes(bytes.substr(kLittleEndianMark.size()), 1);
  if (bytes.starts_with(kBigEndianMark)) return FromUtf16Bytes(bytes.substr(kBigEndianMark.size()), 0);
  return FromUtf8(bytes.substr(bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0));
}
