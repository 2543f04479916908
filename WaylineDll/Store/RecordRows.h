#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "Database/SQLite/SQLRecord.h"

struct sqlite3;

// Writing records as rows: the counterpart of how SQLite reads them. Table and column names come from the
// client itself, never from a user. Results are SQLite result codes, 0 for success; nothing is logged.

/// Some columns of a record, which outlives this.
struct RecordColumns {
  const SQLRecord& record;
  std::vector<ColumnBinding> columns;
};

/// The columns of `record` that have these names, in the order of its columns.
RecordColumns ColumnsNamed(const SQLRecord& record, std::span<const std::wstring_view> names);

/// The columns of `record` whose values differ from those of `other`, a record of the same class.
RecordColumns DifferingColumns(const SQLRecord& record, const SQLRecord& other);

/// Adds a row with these columns; the others are NULL. Fails when a row with its key exists.
int32_t InsertRow(sqlite3* connection, std::wstring_view table, const RecordColumns& columns);

/// Changes these columns of the rows where all `keys` have their values, and those of `pinned` where they are NULL. At
/// least one column.
int32_t UpdateRow(sqlite3* connection, std::wstring_view table, const RecordColumns& columns,
                  const RecordColumns& pinned, const RecordColumns& keys);

/// Removes the rows where all `keys` have their values, if there are any.
int32_t DeleteRow(sqlite3* connection, std::wstring_view table, const RecordColumns& keys);
