#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Database/SQLite/SQLRecord.h"

struct sqlite3;

// Writing records as rows: the counterpart of how SQLite reads them. Table and column names come from the
// client itself, never from a user. Results are SQLite result codes, 0 for success; nothing is logged.

/// Columns of one record, each with the member that holds its value.
using ColumnList = std::vector<ColumnBinding>;

/// The columns of `record` whose values differ from those of `other`, a record of the same class.
ColumnList DifferingColumns(const SQLRecord& record, const SQLRecord& other);

/// Adds a row with these columns; the others are NULL. Fails when a row with its key exists.
int32_t InsertRow(sqlite3* connection, std::wstring_view table, const ColumnList& columns);

/// As above, but takes the place of a row with the same key. A key column (ColumnKind::Key) with value 0 gets
/// a new key.
int32_t ReplaceRow(sqlite3* connection, std::wstring_view table, const ColumnList& columns);

/// Changes these columns of the rows where all `keys` have their values. At least one column.
int32_t UpdateRow(sqlite3* connection, std::wstring_view table, const ColumnList& columns, const ColumnList& keys);

/// Removes the rows where all `keys` have their values, if there are any.
int32_t DeleteRow(sqlite3* connection, std::wstring_view table, const ColumnList& keys);
