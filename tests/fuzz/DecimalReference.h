#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

/// A number at the start of a text, read the slow and plain way.
struct DecimalReference {
  __extension__ using Wide = __int128;

  bool hasDigits = false;
  Wide value = 0;  // at most one digit beyond 64 bits, where it stops growing

  template <typename Character>
  explicit DecimalReference(std::basic_string_view<Character> text) {
    size_t at = 0;
    while (at < text.size() && IsBlank(static_cast<char32_t>(text[at]))) ++at;
    bool negative = false;
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) negative = text[at++] == '-';
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
      hasDigits = true;
      if (value <= std::numeric_limits<int64_t>::max()) value = value * 10 + static_cast<int>(text[at] - '0');
    }
    if (negative) value = -value;
  }

  template <typename Integer>
  bool Fits() const {
    return value >= std::numeric_limits<Integer>::min() && value <= std::numeric_limits<Integer>::max();
  }

  /// The nearest number that the type has.
  template <typename Integer>
  Integer Clamped() const {
    if (Fits<Integer>()) return static_cast<Integer>(value);
    return value < 0 ? std::numeric_limits<Integer>::min() : std::numeric_limits<Integer>::max();
  }

 private:
  static bool IsBlank(char32_t character) { return character == ' ' || (character >= '\t' && character <= '\r'); }
};
