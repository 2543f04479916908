#include "NetUtilities/Text/Trim.h"

std::wstring_view Trim(std::wstring_view text, std::wstring_view blanks) {
  const size_t first = text.find_first_not_of(blanks);
  if (first == std::wstring_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::wstring_view Unquote(std::wstring_view text) {
  if (text.size() >= 2 && text.front() == L'"' && text.back() == L'"') return text.substr(1, text.size() - 2);
  return text;
}
