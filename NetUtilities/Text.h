#pragma once

#include <string>
#include <string_view>
#include <vector>

/// True when `text`, in any case of letters, is one of the words "true", "yes", "y" and "t".
bool StringToBool(std::wstring_view text);

/// True when `needle` occurs in `haystack` after both are lower-cased by the wide-character rule. An empty needle or
/// haystack is never found.
bool ContainsNoCase(std::wstring_view haystack, std::wstring_view needle);

/// As ContainsNoCase, but only ASCII letters fold, and an empty needle is found in any non-empty haystack.
bool ContainsNoCaseAscii(std::wstring_view haystack, std::wstring_view needle);

/// True when the texts are equal, ASCII letters compared without regard to case.
bool EqualsNoCaseAscii(std::wstring_view left, std::wstring_view right);

/// The pieces of `text` between any of the characters in `separators`, in order; empty pieces are left out.
std::vector<std::wstring> SplitNonEmpty(std::wstring_view text, std::wstring_view separators);

/// `text` in UTF-8. A surrogate without its partner becomes "_".
std::string ToUtf8(std::wstring_view text);

/// The text that `utf8` encodes; bytes that are no UTF-8 become U+FFFD.
std::wstring FromUtf8(std::string_view utf8);

/// The text in the bytes of a file. A byte-order mark tells UTF-8 and both orders of UTF-16; without one they are taken
/// as UTF-8. What is not well-formed becomes U+FFFD.
std::wstring DecodeText(std::string_view bytes);
