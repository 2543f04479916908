#pragma once

#include <string>
#include <string_view>

/// A function's name, as std::source_location gives it, without the calling-convention word "__cdecl" and the blank
/// behind it. Where these letters are part of another word they stay.
std::wstring CleanFunctionName(std::string_view functionName);
