// Settings databases with any content, as the client library uses them: opening one is refused and leaves the file as
// it is, or reads and saves work.

#include <sqlite3.h>

#include <filesystem>
#include <optional>

#include "Database/SQLite/SQLiteDatabaseManager.h"
#include "NetUtilities/Module/Singleton.h"
#include "tests/fuzz/DatabaseFuzz.h"
#include "tests/fuzz/Require.h"
#include "tests/support/FileBytes.h"
#include "tests/support/LogCapture.h"
#include "WaylineDll/Store/DatabaseCreation.h"
#include "WaylineDll/Store/SettingsStore.h"

namespace {

std::string MakeBase(const DatabaseFuzz& database) {
  Require(!CreateDatabaseFile(database.File()));
  return FileBytes(database.File());
}

void Read(SettingsStore& store, ProfileTable& profiles) {
  if (const Failure failure = store.LoadProfiles(profiles)) {
    Require(profiles.empty() && !failure->empty());
  }
  for (const auto& [id, profile] : profiles) Require(profile != nullptr);
  store.GetActiveTimeouts();
  for (const bool automatic : {false, true}) store.LoadConfig(store.GetActiveProfileId(), automatic);
}

void CheckSaving(SettingsStore& store, const ProfileTable& profiles) {
  if (profiles.empty()) return;
  SettingsTables tables;
  const auto changed = std::make_shared<Profile>(*profiles.rbegin()->second);
  changed->SetAccount(changed->GetAccount() + L"!");
  changed->SetState(ChangeState::Changed);
  tables.profiles[profiles.rbegin()->first] = changed;
  SaveReport report;
  const Failure failure = store.Save(tables, report);
  Require(report.changes.size() == (failure ? 0u : 1u));
  ProfileTable again;
  const Failure reading = store.LoadProfiles(again);
  if (failure || reading || DatabaseFuzz::IsExhausted()) return;
  const auto saved = again.find(profiles.rbegin()->first);
  Require(saved != again.end() && saved->second->GetAccount() == changed->GetAccount());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const DatabaseFuzz database;
  static const std::string base = MakeBase(database);
  const std::string image = database.WriteImage(base, data, size);
  const LogCapture log;
  bool saves = false;
  {
    SettingsStore store;
    if (const Failure failure = store.Open(database.File())) {
      Require(!failure->empty());
    } else {
      ProfileTable profiles;
      Read(store, profiles);
      saves = size % 2 != 0 && !profiles.empty();
      if (saves) CheckSaving(store, profiles);
    }
  }
  if (!saves) Require(FileBytes(database.File()) == image);
  return 0;
}
