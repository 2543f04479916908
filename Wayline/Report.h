#pragma once

#include <cstdint>
#include <string>

#include "Database/Profiles/Profile.h"
#include "WaylineDll/SettingsTables.h"

// What the program prints, in UTF-8, each with its line ends.

/// The profiles as a table with a headline.
std::string ProfileListText(const ProfileTable& profiles, uint32_t activeId);

/// The profiles as a JSON array of objects.
std::string ProfileListJson(const ProfileTable& profiles, uint32_t activeId);

/// One line of JSON about a sheet that has ended: its result, whether the changes were saved, the saved records, and
/// what was lost.
std::string SheetResultJson(int64_t result, bool saved, const SaveReport& report);
