// Files of test switches: the value found is the one that a plain reading finds.

#include <algorithm>
#include <optional>

#include "NetUtilities/Files/IniText.h"
#include "NetUtilities/Text/DecodeText.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/Require.h"

namespace {

bool IsBlank(wchar_t character) { return character == L' ' || (character >= L'\t' && character <= L'\r'); }

std::wstring Trimmed(std::wstring text) {
  while (!text.empty() && IsBlank(text.back())) text.pop_back();
  while (!text.empty() && IsBlank(text.front())) text.erase(0, 1);
  return text;
}

std::wstring Upper(std::wstring text) {
  for (wchar_t& character : text) {
    if (character >= L'a' && character <= L'z') character = static_cast<wchar_t>(character - L'a' + L'A');
  }
  return text;
}

std::optional<std::wstring> Expected(const std::wstring& text, const std::wstring& section, const std::wstring& key) {
  enum class Place { Before, Inside, Behind } place = Place::Before;
  for (size_t start = 0; start <= text.size() && place != Place::Behind;) {
    const size_t end = std::min(text.find(L'\n', start), text.size());
    const std::wstring line = Trimmed(text.substr(start, end - start));
    start = end + 1;
    if (line.starts_with(L';') || line.starts_with(L'#')) continue;
    if (line.starts_with(L'[')) {
      const bool named = line.ends_with(L']') && Upper(Trimmed(line.substr(1, line.size() - 2))) == Upper(section);
      if (place == Place::Inside) place = Place::Behind;
      if (place == Place::Before && named) place = Place::Inside;
      continue;
    }
    const size_t equals = line.find(L'=');
    if (place == Place::Inside && equals != std::wstring::npos &&
        Upper(Trimmed(line.substr(0, equals))) == Upper(key)) {
      return Trimmed(line.substr(equals + 1));
    }
  }
  return std::nullopt;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input(data, size);
  const std::wstring section = input.WideLine();
  const std::wstring key = input.WideLine();
  const std::wstring text = DecodeText(input.Rest());
  const std::optional<std::wstring> value = FindIniValue(text, section, key);
  Require(value == Expected(text, section, key));
  Require(value == FindIniValue(text, Upper(section), Upper(key)));
  Require(value == FindIniValue(L"; [" + section + L"]\n\r\n" + text, section, key));
  Require(!value || value->find(L'\n') == std::wstring::npos);
  // What stands behind the first value does not count.
  if (value) Require(value == FindIniValue(text + L"\n[" + section + L"]\n" + key + L"=other", section, key));
  for (const std::wstring& shown : {value.value_or(L""), section}) {
    const wchar_t first = shown.empty() ? L'0' : Upper(shown).front();
    Require(IsIniSwitchOn(shown) == (first == L'1' || first == L'T' || first == L'Y'));
  }
  return 0;
}
