#pragma once

#include <cstdint>
#include <string>

#include "WaylineDll/SettingsTables.h"

struct sqlite3;

// As in the schema.
inline constexpr int64_t kOldestVersion = 1;
inline constexpr int64_t kCurrentVersion = 2;

/// Where a settings database is copied to before it is upgraded from a version: "Wayline.version1.db" beside
/// "Wayline.db".
std::wstring CopyBeforeUpgrade(const std::wstring& file, int64_t version);

/// Leads a settings database of an earlier version to the current one, after it has been copied. `connection` is in a
/// transaction that writes, and has written nothing yet; the upgrade happens when it is committed. An older copy of the
/// same version is replaced.
Failure UpgradeSchema(sqlite3* connection, const std::wstring& file, int64_t version);
