#pragma once

#include <cstdint>
#include <string>

#include "WaylineDll/SettingsTables.h"

struct sqlite3;

/// How long an operation waits, in milliseconds, for another program that is using the settings database.
inline constexpr int kBusyTimeout = 500;

/// Creates a settings database with sample data. The file appears complete or not at all, also when the
/// program is interrupted.
Failure CreateDatabaseFile(const std::wstring& file);

/// Checks that an existing file is a settings database of this version, with every table and column, that it
/// is free and that it can be written. The file stays as it is.
Failure CheckDatabaseFile(const std::wstring& file);

/// Checks that the links of every profile end at a profile that has none. Loading a profile would go on for
/// ever otherwise.
Failure CheckProfileChains(sqlite3* connection, const std::wstring& file);

/// The failure to use a file for a reason that a SQLite result code tells.
Failure UseFailure(const std::wstring& file, sqlite3* connection, int32_t code);

/// The reason for a SQLite result code, as the end of a sentence. `connection` is the one that failed, or null.
std::wstring ReasonText(sqlite3* connection, int32_t code);
