#pragma once

#include <string>
#include <string_view>
#include <vector>

/// `text` with "%1" to "%9" replaced by `items` in order. A number without an item stays, and what an item brings in is
/// not replaced again.
std::wstring SubstituteItems(std::wstring_view text, const std::vector<std::wstring_view>& items);
