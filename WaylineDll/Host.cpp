#include "WaylineDll/Host.h"

#include <memory>
#include <optional>
#include <utility>

#include "Database/SQLite/DatabasePlatform.h"
#include "NetUtilities/Logger/Logger.h"
#include "WaylineDll/OpenStore.h"
#include "WaylineDll/Store/SettingsStore.h"

namespace {

std::unique_ptr<SettingsStore> openStore;
std::optional<LogSession> logging;  // while the settings are open

Failure NotOpen() { return L"No settings database is open."; }

}  // namespace

SettingsStore* OpenStore() { return openStore.get(); }

Failure OpenSettings(const std::wstring& file, SettingsAccess access) {
  // The mutex tells who reads the settings first on this machine, and logs. That is for the modules to find
  // out.
  databasePlatform.createInstanceMutex = [](const std::wstring&) { return InstanceMutex{}; };
  CloseSettings();
  auto store = std::make_unique<SettingsStore>();
  // A failure logs, too, and the service must not be held any longer than that.
  logging.emplace();
  if (Failure failure = store->Open(file, access)) {
    logging.reset();
    return failure;
  }
  openStore = std::move(store);
  return {};
}

Failure LoadProfiles(ProfileTable& profiles) { return openStore ? openStore->LoadProfiles(profiles) : NotOpen(); }

Failure SaveSettings(const SettingsTables& tables, SaveReport& report) {
  return openStore ? openStore->Save(tables, report) : NotOpen();
}

void DiscardChanges() {
  if (openStore) openStore->DiscardChanges();
}

Failure SetConnectionState(FSMState state) {
  return openStore ? openStore->Values().SetConnectionState(state) : NotOpen();
}

Failure SetBookmark(Bookmark::Index index, const std::wstring& value) {
  return openStore ? openStore->Values().SetBookmark(static_cast<uint32_t>(index), value) : NotOpen();
}

std::wstring GetSettingsFile() { return openStore ? openStore->GetFile() : std::wstring(); }

void CloseSettings() {
  openStore.reset();
  logging.reset();
}

void StopLibraryLog() { StopLogger(); }
