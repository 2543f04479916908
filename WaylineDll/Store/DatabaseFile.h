#pragma once

#include <string>

#include "WaylineDll/SettingsAccess.h"
#include "WaylineDll/SettingsTables.h"

struct sqlite3;

/// Checks that an existing file is a settings database, with every table and column, that can be used. To be edited, it
/// must be free, and it and its folder writable; it is upgraded if it is of an earlier version. The file stays as it is
/// in every other case. To be read, an earlier version will do.
Failure CheckDatabaseFile(const std::wstring& file, SettingsAccess access);

/// Checks that the links of every profile end at a profile that has none. Loading a profile would go on for
/// ever otherwise.
Failure CheckProfileChains(sqlite3* connection, const std::wstring& file);
