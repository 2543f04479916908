#pragma once

#include <cstdint>
#include <string>

#include "WaylineDll/SettingsAccess.h"
#include "WaylineDll/SettingsTables.h"

struct sqlite3;

/// How long an operation waits, in milliseconds, for another program that is using the settings database.
inline constexpr int kBusyTimeout = 500;

/// Creates a settings database with sample data. The file appears complete or not at all, also when the
/// program is interrupted.
Failure CreateDatabaseFile(const std::wstring& file);

/// Checks that an existing file is a settings database of this version, with every table and column, that it
/// is free and that it can be written. The file stays as it is.
Failure CheckDatabaseFile(const std::wstring& file, SettingsAccess access);

/// Checks that the links of every profile end at a profile that has none. Loading a profile would go on for
/// ever otherwise.
Failure CheckProfileChains(sqlite3* connection, const std::wstring& file);
