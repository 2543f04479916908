#include "WaylineDll/AutoStart.h"

#include "WaylineDll/OpenStore.h"
#include "WaylineDll/Store/SettingsStore.h"

bool GetAutoStart(uint32_t profileId, AutoStartTable& items) {
  items.clear();
  SettingsStore* const store = OpenStore();
  return store != nullptr && store->LoadAutoStart(profileId, items);
}
