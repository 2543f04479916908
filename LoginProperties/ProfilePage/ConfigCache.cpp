#include "LoginProperties/ProfilePage/ConfigCache.h"

std::shared_ptr<ConfigSetting> FindOrLoadConfig(ConfigTable& cache, uint32_t profileId,
                                                bool (*load)(uint32_t, std::shared_ptr<ConfigSetting>&)) {
  if (const auto found = cache.find(profileId); found != cache.end()) return found->second;
  std::shared_ptr<ConfigSetting> config;
  if (!load(profileId, config)) config = nullptr;
  cache.emplace(profileId, config);
  return config;
}
