#include "WaylineDll/Programs/RegistryPath.h"

RegistryPath SplitRegistryPath(std::wstring_view path) {
  const size_t first = path.find(L'\\');
  if (first == std::wstring_view::npos) return {.root = std::wstring(path), .key = {}, .value = {}};
  const size_t last = path.rfind(L'\\');
  const std::wstring_view key = last > first ? path.substr(first + 1, last - first - 1) : std::wstring_view();
  return {.root = std::wstring(path.substr(0, first)),
          .key = std::wstring(key),
          .value = std::wstring(path.substr(last + 1))};
}
