#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The pieces of `text` between any of the characters in `separators`, in order; empty pieces are left out.
std::vector<std::wstring> SplitNonEmpty(std::wstring_view text, std::wstring_view separators);
