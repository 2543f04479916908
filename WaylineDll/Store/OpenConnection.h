#pragma once

#include <cstdint>
#include <string>

#include "Database/SQLite/SQLiteHandles.h"

/// How long an operation waits, in milliseconds, for another program that is using the settings database.
inline constexpr int kBusyTimeout = 500;

/// Opens a file as a database with SQLite's flags. `connection` is also set when that fails, to tell why.
int32_t OpenConnection(const std::wstring& file, int flags, ConnectionHandle& connection);
