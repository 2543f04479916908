#include "NetUtilities/Text/ToWide.h"

#include <windows.h>

std::wstring ToWide(std::string_view narrowText) {
  const int size = static_cast<int>(narrowText.size());
  // No code page makes more units of a text than it has bytes.
  std::wstring text(narrowText.size(), L'\0');
  const int length = MultiByteToWideChar(CP_ACP, 0, narrowText.data(), size, text.data(), size);
  text.resize(static_cast<size_t>(length));
  return text;
}
