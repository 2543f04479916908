#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Database/SQLite/PreparedStatement.h"
#include "NetUtilities/Module/Mutex.h"

struct sqlite3;

/// One connection to a settings database. Shared by everyone who reads the same file; closed with the last
/// reference or when the manager ends.
class SQLiteDatabase {
 public:
  SQLiteDatabase() = default;
  ~SQLiteDatabase() { Close(); }
  SQLiteDatabase(const SQLiteDatabase&) = delete;
  SQLiteDatabase& operator=(const SQLiteDatabase&) = delete;

  /// Opens an existing file for reading and writing; a missing one is not created. Returns and keeps the
  /// SQLite result code, extended codes included; failures are logged. Does nothing and returns 0 while a
  /// connection is open. `configureLogging` also routes SQLite's own log to ours, provided that no other
  /// process is using a database yet; that must precede the first use of the SQLite library. Throws
  /// std::filesystem::filesystem_error when the file system cannot tell whether the file exists; the result is then 0
  /// although nothing is open.
  int32_t Open(bool configureLogging, const std::wstring& path);

  /// Closes the connection; the SQLite result code, 0 when none was open. The connection is given up even if
  /// it cannot be closed because statements are still using it.
  int32_t Close();

  /// Gives a statement of this connection, ready for its values: one that was kept, else a newly compiled one. The
  /// SQLite result code; 21 (SQLITE_MISUSE) while closed. Compiling costs more than running a statement of many
  /// columns.
  int32_t TakeStatement(std::wstring_view text, PreparedStatement& statement);

  /// Keeps a statement that has been reset for those who ask for its text later, until the connection is closed. Of
  /// many that nobody uses the latest remain.
  void KeepStatement(PreparedStatement statement);

  /// Null while closed.
  sqlite3* GetConnection() const { return connection_; }

  /// The result of the last Open.
  int32_t GetResult() const { return result_; }

  const std::wstring& GetPath() const { return path_; }

 private:
  void ConfigureLogging();

  sqlite3* connection_ = nullptr;
  int32_t result_ = 0;
  std::wstring path_;
  std::shared_ptr<void> instanceMutex_;
  Mutex keptMutex_;                      // users of one connection may be on several threads
  std::vector<PreparedStatement> kept_;  // the latest last
};
