#pragma once

#include <string>
#include <string_view>

/// The text in the bytes of a file. A byte-order mark tells UTF-8 and both orders of UTF-16; without one they are taken
/// as UTF-8. What is not well-formed becomes U+FFFD.
std::wstring DecodeText(std::string_view bytes);
