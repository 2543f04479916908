// Titles and messages: items and arguments come in as they are, wherever they belong and nowhere else.

#include <algorithm>
#include <array>
#include <ranges>
#include <string>
#include <vector>

#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/MessageText.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/Require.h"
#include "WaylineDll/Substitution.h"

namespace {

// From the back, so that what was put in is never looked at again.
std::wstring Substituted(std::wstring text, const std::vector<std::wstring>& items) {
  std::vector<size_t> places;
  for (size_t at = 0; at + 1 < text.size(); ++at) {
    const wchar_t digit = text[at + 1];
    if (text[at] != L'%' || digit < L'1' || digit > L'9' || static_cast<size_t>(digit - L'1') >= items.size()) continue;
    places.push_back(at++);
  }
  for (const size_t place : std::views::reverse(places)) {
    text.replace(place, 2, items[static_cast<size_t>(text[place + 1] - L'1')]);
  }
  return text;
}

void CheckSubstitution(const std::wstring& text, const std::vector<std::wstring>& items) {
  const std::vector<std::wstring_view> views(items.begin(), items.end());
  Require(SubstituteItems(text, views) == Substituted(text, items));
  Require(SubstituteItems(text, {}) == text);
}

void CheckClean(const std::wstring& message) {
  const std::wstring clean = CleanMessageText(message);
  std::wstring expected = message;
  std::erase(expected, L'\r');
  const size_t last = expected.find_last_not_of(L'\n');
  if (last != std::wstring::npos) expected.erase(last + 1);
  if (last == std::wstring::npos && !expected.empty()) expected = L"\n";
  Require(clean == expected && CleanMessageText(clean) == clean);
}

void CheckFormat(const std::wstring& text, const std::vector<std::wstring>& items, int64_t number, size_t room) {
  const std::wstring first = items.empty() ? std::wstring() : items.front();
  const std::wstring whole = Format(L"{} - {{{}}} {}", text, first, number);
  Require(whole == text + L" - {" + first + L"} " + std::to_wstring(number));
  std::array<wchar_t, 16> buffer;
  buffer.fill(L'~');
  const std::span<wchar_t> part = std::span(buffer).first(room % (buffer.size() + 1));
  Require(FormatInto(part, L"{} - {{{}}} {}", text, first, number) == whole.size());
  const size_t written = std::min(part.size(), whole.size());
  Require(std::equal(part.begin(), part.begin() + static_cast<std::ptrdiff_t>(written), whole.begin()));
  Require(std::all_of(buffer.begin() + static_cast<std::ptrdiff_t>(written), buffer.end(),
                      [](wchar_t character) { return character == L'~'; }));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input(data, size);
  const size_t room = input.Byte();
  const auto number = input.Number<int64_t>();
  std::vector<std::wstring> items(input.Byte() % 11);
  for (std::wstring& item : items) item = input.WideLine();
  const std::wstring text = input.WideRest();
  CheckSubstitution(text, items);
  CheckClean(text);
  CheckFormat(text, items, number, room);
  return 0;
}
