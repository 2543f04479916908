#pragma once

#include <string>
#include <string_view>

/// A function's name, as std::source_location gives it, without the calling-convention word "__cdecl".
std::wstring CleanFunctionName(std::string_view functionName);
