#pragma once

#include <string>
#include <vector>

#include "WaylineDll/Api.h"
#include "WaylineDll/SettingsTables.h"

// How a host program gets at the client's settings. There is one settings database at a time; the operations
// are called on one thread. They say what went wrong; nothing when all went well.

/// Opens the settings database of the process for reading and writing, in place of the one that was open. A
/// missing file is created with the sample data. A file that cannot be used is left as it is.
WAYLINE_API Failure OpenSettings(const std::wstring& file);

/// Fills `profiles` with all profiles and the values in force for each: those that it inherits included.
WAYLINE_API Failure LoadProfiles(ProfileTable& profiles);

/// Stores every record that has changed, all or none of them, and lists them in `changes`. The records keep
/// their change states: load them again, or drop them, before the next saving.
WAYLINE_API Failure SaveSettings(const SettingsTables& tables, std::vector<RecordChange>& changes);

/// Closes the settings database, if one is open.
WAYLINE_API void CloseSettings();
