#include "NetUtilities/Text/Format.h"

#define FMT_HEADER_ONLY
#include <fmt/xchar.h>

std::wstring FormatArguments(fmt::basic_string_view<wchar_t> pattern,
                             fmt::basic_format_args<fmt::buffer_context<wchar_t>> arguments) {
  return fmt::vformat(pattern, arguments);
}

size_t FormatArgumentsInto(std::span<wchar_t> buffer, fmt::basic_string_view<wchar_t> pattern,
                           fmt::basic_format_args<fmt::buffer_context<wchar_t>> arguments) {
  return fmt::vformat_to_n(buffer.data(), buffer.size(), pattern, arguments).size;
}
