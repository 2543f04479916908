#include "NetUtilities/Text/SplitNonEmpty.h"

#include <algorithm>

std::vector<std::wstring> SplitNonEmpty(std::wstring_view text, std::wstring_view separators) {
  std::vector<std::wstring> pieces;
  while (!text.empty()) {
    const size_t end = std::min(text.find_first_of(separators), text.size());
    if (end > 0) pieces.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return pieces;
}
