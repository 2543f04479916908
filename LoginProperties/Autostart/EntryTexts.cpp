#include "LoginProperties/Autostart/EntryTexts.h"

namespace {

constexpr std::wstring_view kBlanks = L" \t\r\n";

}  // namespace

std::wstring WithoutBlanksAround(std::wstring_view text) {
  const size_t first = text.find_first_not_of(kBlanks);
  if (first == std::wstring_view::npos) return {};
  return std::wstring(text.substr(first, text.find_last_not_of(kBlanks) - first + 1));
}

EntryFault FaultOf(const EntryTexts& texts) {
  if (WithoutBlanksAround(texts.name).empty()) return EntryFault::NameMissing;
  if (WithoutBlanksAround(texts.program).empty()) return EntryFault::ProgramMissing;
  return EntryFault::None;
}

void StoreTexts(const EntryTexts& texts, AutoStartItem::Fields& entry) {
  entry.name = WithoutBlanksAround(texts.name);
  entry.program = WithoutBlanksAround(texts.program);
  entry.parameters = WithoutBlanksAround(texts.parameters);
  entry.directory = WithoutBlanksAround(texts.directory);
}

int ShowCommandOf(int initialSize) {
  constexpr int kNormal = 1;
  constexpr int kMinimized = 2;
  constexpr int kMaximized = 3;
  switch (initialSize) {
    case 1:
      return kMaximized;
    case 2:
      return kMinimized;
    default:
      return kNormal;
  }
}

std::wstring PathIn(std::wstring directory, const std::wstring& program) {
  if (!directory.empty() && directory.back() != L'\\' && directory.back() != L'/') directory += L'\\';
  return directory + program;
}
