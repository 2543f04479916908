#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

/// The places of `names` in the order that a sorted list (LBS_SORT, CBS_SORT) with this locale would give them. Names
/// that such a list does not tell apart, such as those that differ only in case, keep their order.
std::vector<size_t> SortedListOrder(const std::vector<std::wstring>& names, LCID locale);
