#pragma once

#include <cstdint>
#include <memory>

#include "WaylineDll/Api.h"
#include "WaylineDll/AutoStartItem.h"

// The loading operations return false when nothing could be read, and then leave the table empty. The records are
// shared.

/// The autostart entries in force for a profile: its own, else copies of those of the nearest profile along its links
/// which has any, with numbers of their own. Once one is changed, or the profile overrides its defaults, the whole list
/// is saved as the profile's own.
WAYLINE_API bool GetAutoStart(uint32_t profileId, AutoStartTable& items);

/// The user's own autostart entries of a profile.
WAYLINE_API bool LoadUserAutoStart(uint32_t profileId, AutoStartTable& items);

/// Copies the user's entries in `source` to profile `profileId` in `destination`, as new records; returns their number.
WAYLINE_API uint64_t CopyUserAutoStart(uint32_t profileId, const AutoStartTable& source, AutoStartTable& destination);

/// A new autostart entry of a profile with defaults and an id of its own.
WAYLINE_API std::shared_ptr<AutoStartItem> CreateNewItem(uint32_t profileId);
