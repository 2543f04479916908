// Saves to a settings database again and again, so that a test can end it in the middle.
//
//   SavingProgram FILE
//
// Each save gives the profiles 2001 to 2003 the same number, the next after the one that is stored: as their user ids,
// and as the length of texts that fill many pages of the file. Prints the number of each save that has succeeded. Ends
// by itself, with 1, only when something fails.

#include <windows.h>

#include <cwchar>
#include <iostream>
#include <string>

#include "Database/SQLite/DatabasePlatform.h"
#include "WaylineDll/Store/SettingsStore.h"

namespace {

constexpr uint32_t kFirst = 2001;
constexpr uint32_t kLast = 2003;

// The number that it has saved; 0 when something failed.
long SaveNext(SettingsStore& store) {
  constexpr size_t kManyPages = 24'000;
  SettingsTables tables;
  if (store.LoadProfiles(tables.profiles)) return 0;
  // What is no number counts as 0.
  const long number = std::wcstol(tables.profiles.at(kFirst)->GetUserId().c_str(), nullptr, 10) + 1;
  for (uint32_t id = kFirst; id <= kLast; ++id) {
    Profile& profile = *tables.profiles.at(id);
    profile.SetUserId(std::to_wstring(number));
    profile.Columns().helpdeskText = std::wstring(kManyPages + static_cast<size_t>(number), L'x');
    profile.SetState(ChangeState::Changed);
  }
  SaveReport report;
  return store.Save(tables, report) ? 0 : number;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) return 2;
  databasePlatform.createInstanceMutex = [](const std::wstring&) { return InstanceMutex{}; };
  SettingsStore store;
  if (store.Open(argv[1])) return 1;
  while (const long number = SaveNext(store)) std::cout << number << '\n' << std::flush;
  return 1;
}
