#pragma once

#include <string>
#include <string_view>

/// The program of a command line as it stands there, with its quotes, as far as the first 260 characters have it. A
/// path with blanks must be in quotes.
std::wstring RemoveArguments(std::wstring_view command);
