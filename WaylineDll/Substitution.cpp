#include "WaylineDll/Substitution.h"

std::wstring SubstituteItems(std::wstring_view text, const std::vector<std::wstring_view>& items) {
  std::wstring result;
  for (size_t index = 0; index < text.size(); ++index) {
    const bool numbered =
        text[index] == L'%' && index + 1 < text.size() && text[index + 1] >= L'1' && text[index + 1] <= L'9';
    const size_t item = numbered ? static_cast<size_t>(text[index + 1] - L'1') : items.size();
    if (item < items.size()) {
      result += items[item];
      ++index;
    } else {
      result += text[index];
    }
  }
  return result;
}
