#pragma once

// The project's one way to build text from a pattern. The pattern is checked against the arguments when the caller is
// compiled; only the small part of fmt needed for that is included here, the formatting itself is in Format.cpp.

#include <fmt/core.h>

#include <string>

std::wstring FormatArguments(fmt::basic_string_view<wchar_t> pattern,
                             fmt::basic_format_args<fmt::buffer_context<wchar_t>> arguments);

/// Text of `pattern` with each "{}" replaced by an argument.
template <typename... Arguments>
std::wstring Format(fmt::basic_format_string<wchar_t, fmt::type_identity_t<Arguments>...> pattern,
                    Arguments&&... arguments) {
  return FormatArguments(pattern, fmt::make_format_args<fmt::buffer_context<wchar_t>>(arguments...));
}
