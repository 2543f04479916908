#include "Database/SQLite/DecimalText.h"

#include <limits>

namespace {

constexpr std::u16string_view kBlanks = u" \t\n\v\f\r";

template <typename Integer>
Integer Parse(std::u16string_view text) {
  constexpr Integer kSmallest = std::numeric_limits<Integer>::min();
  constexpr Integer kLargest = std::numeric_limits<Integer>::max();
  const size_t start = text.find_first_not_of(kBlanks);
  if (start == std::u16string_view::npos) return 0;
  text.remove_prefix(start);
  const bool negative = text.front() == u'-';
  if (negative || text.front() == u'+') text.remove_prefix(1);

  Integer value = 0;  // counted downwards when negative, because the smallest number has no positive counterpart
  for (const char16_t character : text) {
    if (character < u'0' || character > u'9') break;
    const auto digit = static_cast<Integer>(character - u'0');
    if (negative) {
      if (value < (kSmallest + digit) / 10) return kSmallest;
      value = value * 10 - digit;
    } else {
      if (value > (kLargest - digit) / 10) return kLargest;
      value = value * 10 + digit;
    }
  }
  return value;
}

}  // namespace

int64_t ParseInteger64(std::u16string_view text) { return Parse<int64_t>(text); }

int32_t ParseInteger32(std::u16string_view text) { return Parse<int32_t>(text); }
