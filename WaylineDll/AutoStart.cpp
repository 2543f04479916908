#include "WaylineDll/AutoStart.h"

#include "WaylineDll/OpenStore.h"
#include "WaylineDll/Store/SettingsStore.h"

namespace {

bool Load(bool (SettingsStore::*load)(uint32_t, AutoStartTable&), uint32_t profileId, AutoStartTable& items) {
  items.clear();
  SettingsStore* const store = OpenStore();
  return store != nullptr && (store->*load)(profileId, items);
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
  SettingsStore* const store = OpenStore();
  return store != nullptr ? store->CreateAutoStartItem(profileId) : nullptr;
}
