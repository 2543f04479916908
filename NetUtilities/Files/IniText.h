#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The value of the first `key` in the first section named `section` of an ini text; nothing when there is none. Names
/// match without regard to ASCII case; white space around names and values does not count; lines that start with ";" or
/// "#" are comments.
std::optional<std::wstring> FindIniValue(std::wstring_view text, std::wstring_view section, std::wstring_view key);

/// Whether the value of a switch means "on": it starts with 1, t or y, in any case.
bool IsIniSwitchOn(std::wstring_view value);
