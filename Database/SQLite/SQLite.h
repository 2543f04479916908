#pragma once

#include <cstdint>
#include <memory>
#include <source_location>
#include <string>
#include <string_view>
#include <vector>

#include "Database/SQLite/SQLContext.h"
#include "Database/SQLite/SQLiteDatabase.h"
#include "Database/SQLite/SQLRecord.h"

/// Reads records from a settings database, one statement at a time. Results are SQLite result codes: 0
/// success, 100 a row is ready, 101 done (the success of the loads), everything else a failure. Used by one
/// thread at a time.
class SQLite {
 public:
  /// Opens the database, or joins those who have it open; 0 or the code with which opening failed, which has
  /// been logged. Empty arguments mean the user's data directory and "Wayline.db". Throws as SQLiteDatabase::Open.
  int32_t Open(const std::wstring& directory = {}, const std::wstring& fileName = {});

  /// Prepares a statement in `context`, binds the values to its parameters by position and makes the first
  /// step. Returns that step's result or the code of what failed before it; nothing is logged. Both arguments
  /// are taken over and left empty.
  int32_t Execute(SQLContext& context, std::wstring&& statement, std::vector<int32_t>&& values);

  /// Copies the current row of `context`, whose columns are those of the record in binding order, into the
  /// record. A column that is NULL leaves its member unchanged. A binding of an unknown kind is logged and
  /// takes no column.
  void ReadData(SQLContext& context, SQLRecord* record) const;

  /// Fills `list` with the keys of a record and its ancestors, the record first and the root last, and
  /// returns 101; a record that is not stored gives an empty list. Other results are failures and logged.
  /// Every chain must end in a record whose parent is 0: the walk goes on for ever, and keeps others from writing,
  /// where a parent is not stored or parents form a circle.
  int32_t GetHierarchicalList(std::wstring_view table, const SQLRecord& record, uint32_t id,
                              std::vector<uint32_t>& list);

  /// Fills a record from its row and those of its ancestors: each column takes the value of the nearest one
  /// that stores any, and keeps what it was if none does. Returns 101, also when the record is not stored;
  /// other results are failures and logged. `condition` is what follows the table's name in the statement,
  /// with one parameter for the id: "where ProfileId = @ProfileId".
  int32_t LoadHierarchical(std::wstring_view table, std::wstring_view condition, uint32_t id, SQLRecord& record);

  /// Logs a failure of the last executed statement in the name of the calling operation; nothing for code 0.
  void ReportError(int32_t code, const std::source_location& operation = std::source_location::current()) const;

  /// The open database, shared with everyone who reads the same file; null before Open.
  const std::shared_ptr<SQLiteDatabase>& GetDatabase() const { return database_; }

  /// Full path of the database file; empty before Open.
  const std::wstring& GetPath() const { return path_; }

 private:
  // As Execute, for a statement that is run again and again.
  int32_t ExecuteWithId(SQLContext& context, const std::wstring& statement, uint32_t id);
  int32_t Run(SQLContext& context) const;
  std::wstring StatementWithParameters() const;

  std::wstring statement_;
  std::vector<int32_t> values_;  // of its parameters
  std::shared_ptr<SQLiteDatabase> database_;
  std::wstring path_;
};
