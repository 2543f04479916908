#pragma once

#include <string>
#include <string_view>

/// `text` with every `variable` replaced by `value`, ASCII letters compared without regard to case. What is brought in
/// is not replaced again; an empty variable is nowhere.
std::wstring ReplaceVariable(std::wstring_view text, std::wstring_view variable, std::wstring_view value);
