#include "NetUtilities/Format.h"

#define FMT_HEADER_ONLY
#include <fmt/xchar.h>

std::wstring FormatArguments(fmt::basic_string_view<wchar_t> pattern,
                             fmt::basic_format_args<fmt::buffer_context<wchar_t>> arguments) {
  return fmt::vformat(pattern, arguments);
}
