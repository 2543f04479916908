#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The text without the blanks and line ends around it.
std::wstring Trimmed(std::wstring_view text);

/// What a field of one line takes from a text that is pasted: trimmed, with a blank for the line ends inside.
std::wstring PastedText(std::wstring_view text);

// What a field may hold. The text has been trimmed.

bool HasControlCharacter(std::wstring_view text);

/// Nothing, or a text without control characters of at most 256 characters.
bool IsAccount(std::wstring_view text);

/// As an account, and without blanks.
bool IsUserId(std::wstring_view text);

/// Labels with dots between them: letters, digits, hyphens and underscores, without a hyphen at either end, at most 63
/// characters each and 253 in all.
bool IsDomainName(std::wstring_view text);

/// The domain names in a list, separated by commas, semicolons or blanks, as they are stored: with a comma between
/// them. Nothing when one of them is none, or there are none.
std::optional<std::wstring> SuffixList(std::wstring_view text);
