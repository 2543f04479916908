#include "WaylineDll/Host.h"

#include <memory>
#include <utility>

#include "Database/SQLite/DatabasePlatform.h"
#include "NetUtilities/Logger/Log.h"
#include "WaylineDll/OpenStore.h"
#include "WaylineDll/Store/SettingsStore.h"

namespace {

std::unique_ptr<SettingsStore> openStore;

Failure Logged(Failure failure) {
  if (failure) Log(LogSource::Database, LogLevel::Error, *failure);
  return failure;
}

Failure NotOpen() { return L"No settings database is open."; }

}  // namespace

SettingsStore* OpenStore() { return openStore.get(); }

Failure OpenSettings(const std::wstring& file) {
  // The mutex tells who reads the settings first on this machine, and logs. That is for the modules to find
  // out.
  databasePlatform.createInstanceMutex = [](const std::wstring&) { return InstanceMutex{}; };
  CloseSettings();
  auto store = std::make_unique<SettingsStore>();
  if (Failure failure = store->Open(file)) return Logged(std::move(failure));
  openStore = std::move(store);
  return {};
}

Failure LoadProfiles(ProfileTable& profiles) {
  return Logged(openStore ? openStore->LoadProfiles(profiles) : NotOpen());
}

Failure SaveSettings(const SettingsTables& tables, std::vector<RecordChange>& changes) {
  return Logged(openStore ? openStore->Save(tables, changes) : NotOpen());
}

void CloseSettings() { openStore.reset(); }
