#pragma once

// The project's one way to build text from a pattern. The pattern is checked against the arguments when the caller is
// compiled; only the small part of fmt needed for that is included here, the formatting itself is in Format.cpp.

#include <fmt/core.h>

#include <span>
#include <string>

size_t FormatArgumentsInto(std::span<wchar_t> buffer, fmt::basic_string_view<wchar_t> pattern,
                           fmt::basic_format_args<fmt::buffer_context<wchar_t>> arguments);
std::wstring FormatArguments(fmt::basic_string_view<wchar_t> pattern,
                             fmt::basic_format_args<fmt::buffer_context<wchar_t>> arguments);

/// Text of `pattern` with each "{}" replaced by an argument.
template <typename... Arguments>
std::wstring Format(fmt::basic_format_string<wchar_t, fmt::type_identity_t<Arguments>...> pattern,
                    Arguments&&... arguments) {
  return FormatArguments(pattern, fmt::make_format_args<fmt::buffer_context<wchar_t>>(arguments...));
}

/// The same text written into `buffer`, as far as it fits and without a null character, for code that must do without
/// memory from the heap. Returns the length of the whole text.
template <typename... Arguments>
size_t FormatInto(std::span<wchar_t> buffer,
                  fmt::basic_format_string<wchar_t, fmt::type_identity_t<Arguments>...> pattern,
                  Arguments&&... arguments) {
  return FormatArgumentsInto(buffer, pattern, fmt::make_format_args<fmt::buffer_context<wchar_t>>(arguments...));
}
