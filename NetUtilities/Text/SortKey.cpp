#include "NetUtilities/Text/SortKey.h"

#include <array>

std::string SortKey(const std::wstring& name, LCID locale) {
  constexpr DWORD kAsListsCompare = LCMAP_SORTKEY | NORM_IGNORECASE;
  constexpr int kUsualSize = 512;
  const auto map = [&](char* key, int size) {
    return LCMapStringW(locale, kAsListsCompare, name.c_str(), -1, reinterpret_cast<wchar_t*>(key), size);
  };
  std::array<char, kUsualSize> usual;
  if (const int size = map(usual.data(), kUsualSize); size > 0) return {usual.data(), static_cast<size_t>(size)};
  std::string key(static_cast<size_t>(map(nullptr, 0)), '\0');
  map(key.data(), static_cast<int>(key.size()));
  return key;
}
