#pragma once

#include <memory>

#include "Database/Profiles/Profile.h"
#include "WaylineDll/Api.h"

/// A new profile with defaults and an id of its own, not yet in the database; null on failure.
WAYLINE_API std::shared_ptr<Profile> CreateNewProfile();
