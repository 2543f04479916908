#pragma once

#include "WaylineDll/Api.h"

/// Whether the multi-homing preference may be shown and changed: false when the setting cannot be read, else `on` is
/// whether the administrator has switched it on.
WAYLINE_API bool IsMultiHomingControlAuthorized(bool* on);
