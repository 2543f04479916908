#include "NetUtilities/Text/DecodeText.h"

#include <cstdint>

#include "NetUtilities/Text/Surrogates.h"
#include "NetUtilities/Text/Utf8.h"

namespace {

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
    } else if (IsSurrogate(codePoint)) {
      codePoint = kReplacementCharacter;
    }
    AppendCharacter(text, codePoint);
  }
  if (bytes.size() % 2 != 0) AppendCharacter(text, kReplacementCharacter);
  return text;
}

}  // namespace

std::wstring DecodeText(std::string_view bytes) {
  constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
  constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
  constexpr std::string_view kBigEndianMark = "\xFE\xFF";
  if (bytes.starts_with(kLittleEndianMark)) return FromUtf16Bytes(bytes.substr(kLittleEndianMark.size()), 1);
  if (bytes.starts_with(kBigEndianMark)) return FromUtf16Bytes(bytes.substr(kBigEndianMark.size()), 0);
  return FromUtf8(bytes.substr(bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0));
}
