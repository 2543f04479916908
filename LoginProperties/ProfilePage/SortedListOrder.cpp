#include "LoginProperties/ProfilePage/SortedListOrder.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace {

// Bytes that compare as the list compares names. Making them costs as much as a comparison or two, and each name of
// 10,000 would be compared thirteen times.
std::string SortKey(const std::wstring& name, LCID locale) {
  constexpr DWORD kAsListsCompare = LCMAP_SORTKEY | NORM_IGNORECASE;
  const int size = LCMapStringW(locale, kAsListsCompare, name.c_str(), -1, nullptr, 0);
  std::string key(static_cast<size_t>(size), '\0');
  LCMapStringW(locale, kAsListsCompare, name.c_str(), -1, reinterpret_cast<wchar_t*>(key.data()), size);
  return key;
}

}  // namespace

std::vector<size_t> SortedListOrder(const std::vector<std::wstring>& names, LCID locale) {
  std::vector<std::pair<std::string, size_t>> keys;
  keys.reserve(names.size());
  for (size_t place = 0; place < names.size(); ++place) keys.emplace_back(SortKey(names[place], locale), place);
  std::ranges::sort(keys);
  std::vector<size_t> order;
  order.reserve(names.size());
  for (const size_t place : keys | std::views::values) order.push_back(place);
  return order;
}
