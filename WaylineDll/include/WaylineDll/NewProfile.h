#pragma once

#include <memory>

#include "Database/Profiles/Profile.h"
#include "WaylineDll/Api.h"

/// A new profile, not yet in the database: with an id of its own, without a name, and with the values in force of the
/// defaults that it follows, which are those of the active profile or else the first there are. It is stored when it is
/// handed to SaveSettings with the change state `New`. Null on failure, which is logged.
WAYLINE_API std::shared_ptr<Profile> CreateNewProfile();
