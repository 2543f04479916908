#include "WaylineDll/Preferences.h"

#include "WaylineDll/OpenStore.h"
#include "WaylineDll/Store/SettingsStore.h"

namespace {

bool Load(bool (SettingsStore::*load)(uint32_t, PreferenceTable&), uint32_t profileId, PreferenceTable& preferences) {
  preferences.clear();
  SettingsStore* const store = OpenStore();
  return store != nullptr && (store->*load)(profileId, preferences);
}

}  // namespace

bool GetPreferences(uint32_t profileId, PreferenceTable& preferences) {
  return Load(&SettingsStore::LoadPreferences, profileId, preferences);
}

bool GetUserPreferences(uint32_t profileId, PreferenceTable& preferences) {
  return Load(&SettingsStore::LoadOwnPreferences, profileId, preferences);
}
