#include "LoginProperties/ProfilePage/SortedListOrder.h"

#include <algorithm>
#include <ranges>
#include <utility>

#include "NetUtilities/Text/SortKey.h"

std::vector<size_t> SortedListOrder(const std::vector<std::wstring>& names, LCID locale) {
  // Among 10,000 names each would be compared thirteen times.
  std::vector<std::pair<std::string, size_t>> keys;
  keys.reserve(names.size());
  for (size_t place = 0; place < names.size(); ++place) keys.emplace_back(SortKey(names[place], locale), place);
  std::ranges::sort(keys);
  const auto order = keys | std::views::values;
  return {order.begin(), order.end()};
}
