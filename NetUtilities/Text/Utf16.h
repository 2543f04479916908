#pragma once

#include <string>
#include <string_view>

// SQLite's wide interface speaks UTF-16 on every system; wide strings are UTF-16 on some only. A surrogate
// without its partner is carried through both ways.

/// `text` in UTF-16 units.
std::u16string ToUtf16(std::wstring_view text);

/// The text that the units encode.
std::wstring FromUtf16(std::u16string_view units);

/// As above for text as SQLite returns it, closed by a zero unit; null gives empty text.
std::wstring FromUtf16(const void* units);
