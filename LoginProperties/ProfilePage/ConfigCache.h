#pragma once

#include <memory>

#include "WaylineDll/ConfigSetting.h"

/// The configuration of a profile in `cache`. One that is not there is loaded and kept, also when there is none (null).
std::shared_ptr<ConfigSetting> FindOrLoadConfig(ConfigTable& cache, uint32_t profileId,
                                                bool (*load)(uint32_t, std::shared_ptr<ConfigSetting>&));
