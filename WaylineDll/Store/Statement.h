#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Database/SQLite/SQLiteHandles.h"

/// One SQL statement of a connection, which must outlive it. Results are SQLite result codes; parameters
/// count from 1, columns from 0. Nothing is logged.
class Statement {
 public:
  /// Replaces the statement by another; 0 when it is ready to be stepped.
  int32_t Prepare(sqlite3* connection, std::wstring_view sql);

  // A parameter that is not bound is NULL.
  int32_t BindInteger(int parameter, int64_t value);
  int32_t BindText(int parameter, std::wstring_view text);

  /// 100 (SQLITE_ROW) when there is a row to be read, 101 (SQLITE_DONE) at the end, else what failed.
  int32_t Step();

  // A column of the current row; NULL reads as 0, and as an empty text.
  int64_t Integer(int column) const;
  std::wstring Text(int column) const;

 private:
  StatementHandle statement_;
};

/// Runs a statement that has no parameters and no interesting rows; 0 when it succeeds.
int32_t RunStatement(sqlite3* connection, std::wstring_view sql);

/// Reads the number in the first row and column that a statement without parameters gives; 0 when there is one.
int32_t ReadNumber(sqlite3* connection, std::wstring_view sql, int64_t& number);
