#pragma once

#include <string_view>

/// `character` in lower case by the wide-character rule.
wchar_t LowerWide(wchar_t character);

/// True when `needle` occurs in `haystack` after both are lower-cased by the wide-character rule. An empty needle or
/// haystack is never found.
bool ContainsNoCase(std::wstring_view haystack, std::wstring_view needle);

/// As ContainsNoCase, but only ASCII letters fold, and an empty needle is found in any non-empty haystack.
bool ContainsNoCaseAscii(std::wstring_view haystack, std::wstring_view needle);

/// True when the texts are equal, ASCII letters compared without regard to case.
bool EqualsNoCaseAscii(std::wstring_view left, std::wstring_view right);
