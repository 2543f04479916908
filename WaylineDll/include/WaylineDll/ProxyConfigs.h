#pragma once

#include <cstdint>
#include <memory>

#include "WaylineDll/Api.h"
#include "WaylineDll/ConfigSetting.h"

// Both return false when nothing could be read; `config` is then null. From the loading of the profiles until they are
// saved or their changes discarded, the same profile has the same records.

/// The proxy configuration that the client found for a profile; empty when there is none.
WAYLINE_API bool LoadAutoConfig(uint32_t profileId, std::shared_ptr<ConfigSetting>& config);

/// The proxy configuration that the user entered for a profile; empty when there is none.
WAYLINE_API bool LoadManualConfig(uint32_t profileId, std::shared_ptr<ConfigSetting>& config);
