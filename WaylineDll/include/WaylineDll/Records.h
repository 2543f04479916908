#pragma once

#include <cstdint>
#include <memory>

#include "Database/Profiles/Preference.h"
#include "Database/Profiles/Profile.h"
#include "WaylineDll/Api.h"
#include "WaylineDll/AutoStartItem.h"
#include "WaylineDll/ConfigSetting.h"

// Records of the client's stores. All are handed out as shared owners; the loading operations return false when nothing
// could be read and then leave the output empty.

/// A new profile with defaults and an id of its own, not yet in the database; null on failure.
WAYLINE_API std::shared_ptr<Profile> CreateNewProfile();

/// The preferences in force for a profile: its own, where it has any, else those of the profile that it is linked to.
/// The records are the profile's: a changed one is saved as its own.
WAYLINE_API bool GetPreferences(uint32_t profileId, PreferenceTable& preferences);

/// The user's own preferences of a profile.
WAYLINE_API bool GetUserPreferences(uint32_t profileId, PreferenceTable& preferences);

/// The proxy configuration that the client found for a profile; null when there is none.
WAYLINE_API bool LoadAutoConfig(uint32_t profileId, std::shared_ptr<ConfigSetting>& config);

/// The proxy configuration that the user entered for a profile; null when there is none.
WAYLINE_API bool LoadManualConfig(uint32_t profileId, std::shared_ptr<ConfigSetting>& config);

/// The autostart entries in force for a profile.
WAYLINE_API bool GetAutoStart(uint32_t profileId, AutoStartTable& items);

/// The user's own autostart entries of a profile.
WAYLINE_API bool LoadUserAutoStart(uint32_t profileId, AutoStartTable& items);

/// Copies the user's entries in `source` to profile `profileId` in `destination`, as new records; returns their number.
WAYLINE_API uint64_t CopyUserAutoStart(uint32_t profileId, const AutoStartTable& source, AutoStartTable& destination);

/// A new autostart entry of a profile with defaults and an id of its own.
WAYLINE_API std::shared_ptr<AutoStartItem> CreateNewItem(uint32_t profileId);
