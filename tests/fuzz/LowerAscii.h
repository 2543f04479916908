#pragma once

#include <string>

/// A plain statement of what the code under test does: `text` with its ASCII letters in lower case.
inline std::wstring LowerAscii(std::wstring text) {
  for (wchar_t& character : text) {
    if (character >= L'A' && character <= L'Z') character = static_cast<wchar_t>(character - L'A' + L'a');
  }
  return text;
}
