#pragma once

#include <cstdint>

// How UTF-16 encodes a character beyond the first 65,536: as a high surrogate and the low one behind it.

inline constexpr uint32_t kFirstSurrogatePair = 0x10000;
inline constexpr uint32_t kLastCharacter = 0x10FFFF;

/// Stands for what is not well-formed.
inline constexpr uint32_t kReplacementCharacter = 0xFFFD;

constexpr bool IsHighSurrogate(uint32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(uint32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
constexpr bool IsSurrogate(uint32_t unit) { return IsHighSurrogate(unit) || IsLowSurrogate(unit); }

/// The character that a pair encodes.
constexpr uint32_t OfSurrogates(uint32_t high, uint32_t low) {
  return kFirstSurrogatePair + ((high - 0xD800) << 10) + (low - 0xDC00);
}

// The pair of a character from kFirstSurrogatePair on.
constexpr uint32_t HighSurrogateOf(uint32_t character) { return 0xD800 + ((character - kFirstSurrogatePair) >> 10); }
constexpr uint32_t LowSurrogateOf(uint32_t character) { return 0xDC00 + ((character - kFirstSurrogatePair) & 0x3FF); }

/// Appends a character to a text in whose encoding a character takes one unit of 32 bits or up to two of 16.
template <typename Text>
void AppendCharacter(Text& text, uint32_t character) {
  using Unit = typename Text::value_type;
  if (sizeof(Unit) == 2 && character >= kFirstSurrogatePair) {
    text += static_cast<Unit>(HighSurrogateOf(character));
    text += static_cast<Unit>(LowSurrogateOf(character));
  } else {
    text += static_cast<Unit>(character);
  }
}
