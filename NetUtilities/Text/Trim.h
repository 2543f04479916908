#pragma once

#include <string_view>

/// A text without the `blanks` around it, which are ASCII's white space if not given.
std::wstring_view Trim(std::wstring_view text, std::wstring_view blanks = L" \t\n\v\f\r");

/// A text without the double quotes around it; it stays as it is without both.
std::wstring_view Unquote(std::wstring_view text);
