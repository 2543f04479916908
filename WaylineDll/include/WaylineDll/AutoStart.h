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

/// The user's own autostart entries of a profile: its whole list when it stores one itself or one of them was changed,
/// without those that were removed. False also when there are none.
WAYLINE_API bool LoadUserAutoStart(uint32_t profileId, AutoStartTable& items);

/// Makes copies of the entries in `source` the own ones of profile `profileId`, adds them to `destination` and returns
/// their number. GetAutoStart hands them out from then on, until they are saved or discarded. Copies that a wizard has
/// made for the profile already are added, and no others made.
WAYLINE_API uint64_t CopyUserAutoStart(uint32_t profileId, const AutoStartTable& source, AutoStartTable& destination);

/// A new autostart entry of a profile in the first phase, with an id of its own; null when the settings are not open.
/// Needs the profiles to have been loaded: before, nothing is remembered.
/// Once it is marked new, GetAutoStart hands it out with the others, and it is saved. Removed again it never was.
WAYLINE_API std::shared_ptr<AutoStartItem> CreateNewItem(uint32_t profileId);
