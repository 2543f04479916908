#pragma once

#include <cstdint>

#include "Database/Profiles/Preference.h"
#include "WaylineDll/Api.h"

// Both return false when nothing could be read, and then leave the table empty. The records are shared.

/// The preferences in force for a profile: its own, where it has any, else those of the profile that it is linked to.
/// The records are the profile's: a changed one is saved as its own.
WAYLINE_API bool GetPreferences(uint32_t profileId, PreferenceTable& preferences);

/// The user's own preferences of a profile.
WAYLINE_API bool GetUserPreferences(uint32_t profileId, PreferenceTable& preferences);
