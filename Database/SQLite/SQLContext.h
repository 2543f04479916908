#pragma once

#include <cstdint>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

/// Owns one prepared statement, or none. Used by one thread at a time.
class SQLContext {
 public:
  SQLContext() = default;
  ~SQLContext() { Finalize(); }
  SQLContext(const SQLContext&) = delete;
  SQLContext& operator=(const SQLContext&) = delete;

  /// Finalizes the held statement and prepares another; the SQLite result code. A null connection gives 21
  /// (SQLITE_MISUSE).
  int32_t Prepare(sqlite3* connection, std::wstring_view statement);

  /// The next row: 100 (SQLITE_ROW) when there is one, 101 (SQLITE_DONE) after the last, else the failure's
  /// code.
  int32_t Step();

  /// Lets go of the held statement, if any. A failure is logged; the statement is gone in either case.
  void Finalize();

  /// The held statement, owned by this object; null when there is none.
  sqlite3_stmt* Get() const { return statement_; }

 private:
  sqlite3_stmt* statement_ = nullptr;
};
