#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "Database/SQLite/PreparedStatement.h"

class SQLiteDatabase;

/// Owns one prepared statement, or none. Used by one thread at a time.
class SQLContext {
 public:
  SQLContext() = default;
  ~SQLContext() { Finalize(); }
  SQLContext(const SQLContext&) = delete;
  SQLContext& operator=(const SQLContext&) = delete;

  /// Lets go of the held statement and prepares another; the SQLite result code. No database, or one that is closed,
  /// gives 21 (SQLITE_MISUSE).
  int32_t Prepare(const std::shared_ptr<SQLiteDatabase>& database, std::wstring_view statement);

  /// The next row: 100 (SQLITE_ROW) when there is one, 101 (SQLITE_DONE) after the last, else the failure's code.
  int32_t Step();

  /// Lets go of the held statement, if any: the database may keep it for others. When its last step failed, so does
  /// this, which is logged; the statement is gone in either case.
  void Finalize();

  /// The held statement, owned by this object; null when there is none.
  sqlite3_stmt* Get() const { return statement_.handle.get(); }

 private:
  std::shared_ptr<SQLiteDatabase> database_;  // outlives the statement
  PreparedStatement statement_;
};
