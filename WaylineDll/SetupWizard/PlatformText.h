#pragma once

#include <string>
#include <string_view>

// What the platform knows of texts that a user enters.

enum class IpVersion { V4, V6 };

/// Whether the text is an IP address of this version, with nothing around it.
bool IsIpAddress(IpVersion version, const std::wstring& text);

/// Whether a character is a letter or a digit of any script.
bool IsAlphanumeric(wchar_t character);

/// Whether two names are the same to a user, to whom case makes no difference.
bool AreSameNames(std::wstring_view left, std::wstring_view right);
