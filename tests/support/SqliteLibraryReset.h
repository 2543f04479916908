#pragma once

#include <sqlite3.h>

/// While it lives, what is configured in the SQLite library concerns one test only: the library starts
/// uninitialized and is left with no logs set. No connection may be open at either end.
class SqliteLibraryReset {
 public:
  SqliteLibraryReset() { sqlite3_shutdown(); }
  ~SqliteLibraryReset() {
    sqlite3_shutdown();
    sqlite3_config(SQLITE_CONFIG_LOG, nullptr, nullptr);
    sqlite3_config(SQLITE_CONFIG_SQLLOG, nullptr, nullptr);
  }
  SqliteLibraryReset(const SqliteLibraryReset&) = delete;
  SqliteLibraryReset& operator=(const SqliteLibraryReset&) = delete;
};
