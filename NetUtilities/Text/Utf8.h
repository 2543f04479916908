#pragma once

#include <string>
#include <string_view>

/// `text` in UTF-8. A surrogate without its partner becomes "_".
std::string ToUtf8(std::wstring_view text);

/// The text that `utf8` encodes; bytes that are no UTF-8 become U+FFFD.
std::wstring FromUtf8(std::string_view utf8);
