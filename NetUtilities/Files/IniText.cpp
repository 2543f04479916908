#include "NetUtilities/Files/IniText.h"

#include <algorithm>

#include "NetUtilities/Text/IgnoringCase.h"
#include "NetUtilities/Text/Trim.h"

namespace {

std::wstring_view TakeLine(std::wstring_view& text) {
  const size_t end = std::min(text.find(L'\n'), text.size());
  const std::wstring_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return Trim(line);
}

}  // namespace

std::optional<std::wstring> FindIniValue(std::wstring_view text, std::wstring_view section, std::wstring_view key) {
  bool inSection = false;
  while (!text.empty()) {
    const std::wstring_view line = TakeLine(text);
    if (line.empty() || line.front() == L';' || line.front() == L'#') continue;
    if (line.front() == L'[') {
      if (inSection) return std::nullopt;
      inSection = line.back() == L']' && EqualsNoCaseAscii(Trim(line.substr(1, line.size() - 2)), section);
      continue;
    }
    const size_t equals = line.find(L'=');
    if (!inSection || equals == std::wstring_view::npos) continue;
    if (EqualsNoCaseAscii(Trim(line.substr(0, equals)), key)) return std::wstring(Trim(line.substr(equals + 1)));
  }
  return std::nullopt;
}

bool IsIniSwitchOn(std::wstring_view value) {
  constexpr std::wstring_view kOn = L"1tTyY";
  return !value.empty() && kOn.find(value.front()) != std::wstring_view::npos;
}
