#pragma once

#include <list>
#include <memory>
#include <string>

#include "Database/SQLite/SQLiteDatabase.h"

/// The settings database, in the user's data directory.
inline constexpr wchar_t kSettingsDatabaseFile[] = L"Wayline.db";

/// Owner of the process's settings databases, one connection per path. Reached through
/// Singleton<SQLiteDatabaseManager>; used by one thread.
class SQLiteDatabaseManager {
 public:
  SQLiteDatabaseManager() = default;
  SQLiteDatabaseManager(const SQLiteDatabaseManager&) = delete;
  SQLiteDatabaseManager& operator=(const SQLiteDatabaseManager&) = delete;

  /// Closes every database in the order of opening, also those that are still referred to.
  virtual ~SQLiteDatabaseManager();

  /// Path of a database file. An empty directory means the user's data directory, an empty file name
  /// kSettingsDatabaseFile; with neither it is the file that the platform names, if it names one. Empty without a data
  /// directory: no other folder takes its place.
  static std::wstring ComposePath(const std::wstring& directory, const std::wstring& fileName);

  /// The database at a path, opened on the first request; paths that differ in letter case are different
  /// databases. An empty path means the default one. Never null: a database that could not be opened is
  /// returned too, now and on every later request, with the failure as its result. Throws as SQLiteDatabase::Open,
  /// after which the next request tries again.
  std::shared_ptr<SQLiteDatabase> GetDatabase(const std::wstring& path);

 private:
  std::list<std::shared_ptr<SQLiteDatabase>> databases_;  // in the order of opening
};
