#pragma once

#include <cstdint>

#include "Database/Profiles/Preference.h"
#include "WaylineDll/Api.h"

// Both return false, and leave the table empty, when nothing could be read. From the loading of the profiles until they
// are saved or their changes discarded, the same profile has the same records; all that were changed are saved.

/// The preferences in force for a profile, a record for each that the client has: its own value, else that of the
/// nearest profile along its links which stores one, else the built-in one. The records are the profile's: a changed
/// one is saved as its own.
WAYLINE_API bool GetPreferences(uint32_t profileId, PreferenceTable& preferences);

/// Those of them that the profile stores itself or that were changed; false also when there are none, as for a profile
/// above 10000, which shares those of the profile that it is linked to.
WAYLINE_API bool GetUserPreferences(uint32_t profileId, PreferenceTable& preferences);
