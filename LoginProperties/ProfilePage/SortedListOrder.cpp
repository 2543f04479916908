#include "LoginProperties/ProfilePage/SortedListOrder.h"

#include <algorithm>
#include <array>
#include <ranges>
#include <utility>

namespace {

// Bytes that compare as the list compares names. Making them costs as much as comparing once, and among 10,000 names
// each would be compared thirteen times.
std::string SortKey(const std::wstring& name, LCID locale) {
  constexpr DWORD kAsListsCompare = LCMAP_SORTKEY | NORM_IGNORECASE;
  constexpr int kUsualSize = 512;
  const auto map = [&](char* key, int size) {
    return LCMapStringW(locale, kAsListsCompare, name.c_str(), -1, reinterpret_cast<wchar_t*>(key), size);
  };
  std::array<char, kUsualSize> usual;
  if (const int size = map(usual.data(), kUsualSize); size > 0) return {usual.data(), static_cast<size_t>(size)};
  std::string key(static_cast<size_t>(map(nullptr, 0)), '\0');
  map(key.data(), static_cast<int>(key.size()));
  return key;
}

}  // namespace

std::vector<size_t> SortedListOrder(const std::vector<std::wstring>& names, LCID locale) {
  std::vector<std::pair<std::string, size_t>> keys;
  keys.reserve(names.size());
  for (size_t place = 0; place < names.size(); ++place) keys.emplace_back(SortKey(names[place], locale), place);
  std::ranges::sort(keys);
  const auto order = keys | std::views::values;
  return {order.begin(), order.end()};
}
