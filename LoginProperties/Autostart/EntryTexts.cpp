#include "LoginProperties/Autostart/EntryTexts.h"

#include "NetUtilities/Text/Trim.h"

EntryFault FaultOf(const EntryTexts& texts) {
  if (Trim(texts.name).empty()) return EntryFault::NameMissing;
  if (Trim(texts.program).empty()) return EntryFault::ProgramMissing;
  return EntryFault::None;
}

void StoreTexts(const EntryTexts& texts, AutoStartItem::Fields& entry) {
  entry.name = Trim(texts.name);
  entry.program = Trim(texts.program);
  entry.parameters = Trim(texts.parameters);
  entry.directory = Trim(texts.directory);
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
