#include "WaylineDll/ProxyConfigs.h"

#include "WaylineDll/OpenStore.h"
#include "WaylineDll/Store/SettingsStore.h"

namespace {

bool Load(uint32_t profileId, bool automatic, std::shared_ptr<ConfigSetting>& config) {
  SettingsStore* const store = OpenStore();
  config = store != nullptr ? store->LoadConfig(profileId, automatic) : nullptr;
  return config != nullptr;
}

}  // namespace

bool LoadAutoConfig(uint32_t profileId, std::shared_ptr<ConfigSetting>& config) {
  return Load(profileId, true, config);
}

bool LoadManualConfig(uint32_t profileId, std::shared_ptr<ConfigSetting>& config) {
  return Load(profileId, false, config);
}
