#pragma once

#include <cstdint>
#include <memory>

#include "WaylineDll/Api.h"
#include "WaylineDll/ConfigSetting.h"

// Both return false when nothing could be read; `config` is then null. The record is shared.

/// The proxy configuration that the client found for a profile; null when there is none.
WAYLINE_API bool LoadAutoConfig(uint32_t profileId, std::shared_ptr<ConfigSetting>& config);

/// The proxy configuration that the user entered for a profile; null when there is none.
WAYLINE_API bool LoadManualConfig(uint32_t profileId, std::shared_ptr<ConfigSetting>& config);
