#pragma once

#include <string>

/// `text` as a web address: with "http://" in front unless it has "://" already. Empty when it is null or empty.
std::wstring MakeUrl(const wchar_t* text);
