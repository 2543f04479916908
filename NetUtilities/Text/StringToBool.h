#pragma once

#include <string_view>

/// True when `text`, in any case of letters, is one of the words "true", "yes", "y" and "t".
bool StringToBool(std::wstring_view text);
