#pragma once

#include <cstdint>

#include "Database/Profiles/PreferenceId.h"
#include "WaylineDll/Api.h"
#include "WaylineDll/TimeoutValues.h"

/// Id of the profile that the client uses now; 0 when there is none, and the last that was known while it cannot be
/// read, which is logged. (The name is spelled so in the library.)
WAYLINE_API uint32_t GetActiveProfileIdExoprt();

/// The time-outs of the active profile: maximum session, inactivity limit and threshold period. 0 means that none is
/// set or known, except for kUnknownTimeout and kUnlimitedTimeout. Null pointers are skipped.
WAYLINE_API void GetActiveProfileTimeouts2(Duration* session, Duration* idle, Duration* threshold);

/// Changes a check-box preference of the active profile, which stores it as its own from then on.
WAYLINE_API void UpdateActiveProfilePreference(PreferenceId preference, bool on);
