#pragma once

#include <string>

/// The first `longest` characters of a text, in UTF-16 units; one less where half a character would stand at the end.
std::wstring CutText(std::wstring text, size_t longest);
