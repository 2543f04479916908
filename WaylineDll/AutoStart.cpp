#include "WaylineDll/AutoStart.h"

#include "WaylineDll/OpenStore.h"
#include "WaylineDll/Store/SettingsStore.h"

namespace {

bool Load(bool (SettingsStore::*load)(uint32_t, AutoStartTable&), uint32_t profileId, AutoStartTable& items) {
  items.clear();
  SettingsStore* const store = OpenStore();
  return store != nullptr && (store->*load)(profileId, items);
}

// Without settings there are no entries whose numbers could be the same.
uint32_t NewEntryId() {
  static uint32_t nextWithoutSettings = LoadedRecords().nextCopyId;
  SettingsStore* const store = OpenStore();
  return store != nullptr ? store->TakeAutoStartId() : nextWithoutSettings++;
}

}  // namespace

bool GetAutoStart(uint32_t profileId, AutoStartTable& items) {
  return Load(&SettingsStore::LoadAutoStart, profileId, items);
}

bool LoadUserAutoStart(uint32_t profileId, AutoStartTable& items) {
  return Load(&SettingsStore::LoadOwnAutoStart, profileId, items);
}

uint64_t CopyUserAutoStart(uint32_t profileId, const AutoStartTable& source, AutoStartTable& destination) {
  SettingsStore* const store = OpenStore();
  return store != nullptr ? store->CopyAutoStart(profileId, source, destination) : 0;
}

std::shared_ptr<AutoStartItem> CreateNewItem(uint32_t profileId) {
  constexpr uint16_t kFirstPhase = 300;
  auto item = std::make_shared<AutoStartItem>();
  item->fields.id = static_cast<int32_t>(NewEntryId());
  item->fields.profileId = static_cast<int32_t>(profileId);
  item->fields.phase = kFirstPhase;
  return item;
}
