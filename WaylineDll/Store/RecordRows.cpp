#include "WaylineDll/Store/RecordRows.h"

#include <sqlite3.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <span>
#include <string>
#include <variant>

#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/Utf8.h"
#include "WaylineDll/Store/Statement.h"

namespace {

using Columns = std::span<const ColumnBinding>;

int32_t BindValue(Statement& statement, int parameter, ColumnKind kind, const ColumnValue& value) {
  if (const auto* text = std::get_if<std::wstring>(&value)) return statement.BindText(parameter, *text);
  if (const auto* bytes = std::get_if<std::string>(&value)) return statement.BindText(parameter, FromUtf8(*bytes));
  const int64_t number = std::get<int64_t>(value);
  if (kind != ColumnKind::Character) return statement.BindInteger(parameter, number);
  return statement.BindText(parameter, std::wstring(number != 0 ? 1 : 0, static_cast<wchar_t>(number)));
}

// "A = ?, B = ?" with `separator` between the columns.
std::wstring Assignments(Columns columns, std::wstring_view separator) {
  std::wstring text;
  for (const ColumnBinding& column : columns) {
    if (!text.empty()) text += separator;
    text.append(column.name).append(L" = ?");
  }
  return text;
}

// "A = ?, B = ifnull(B, ?)" for columns that get a value, and those that get it where they have none.
std::wstring UpdateAssignments(Columns columns, Columns pinned) {
  std::wstring text = Assignments(columns, L", ");
  for (const ColumnBinding& column : pinned) {
    if (!text.empty()) text += L", ";
    text += Format(L"{} = ifnull({}, ?)", column.name, column.name);
  }
  return text;
}

// Prepares `sql`, binds the values to its parameters in order, and runs it.
int32_t Run(sqlite3* connection, std::wstring_view sql, std::initializer_list<const RecordColumns*> parts) {
  Statement statement;
  int32_t code = statement.Prepare(connection, sql);
  int parameter = 0;
  for (const RecordColumns* part : parts) {
    for (const ColumnBinding& column : part->columns) {
      if (code == SQLITE_OK) code = BindValue(statement, ++parameter, column.kind, column.read(part->record));
    }
  }
  if (code == SQLITE_OK) code = statement.Step();
  return code == SQLITE_DONE ? SQLITE_OK : code;
}

}  // namespace

RecordColumns ColumnsNamed(const SQLRecord& record, std::span<const std::wstring_view> names) {
  RecordColumns named = {record, {}};
  std::ranges::copy_if(record.GetBindings(), std::back_inserter(named.columns), [names](const ColumnBinding& column) {
    return std::ranges::find(names, column.name) != names.end();
  });
  return named;
}

RecordColumns DifferingColumns(const SQLRecord& record, const SQLRecord& other) {
  RecordColumns differing = {record, {}};
  std::ranges::copy_if(record.GetBindings(), std::back_inserter(differing.columns),
                       [&](const ColumnBinding& column) { return column.read(record) != column.read(other); });
  return differing;
}

int32_t InsertRow(sqlite3* connection, std::wstring_view table, const RecordColumns& columns) {
  std::wstring parameters;
  for (size_t index = 0; index < columns.columns.size(); ++index) parameters += index == 0 ? L"?" : L", ?";
  return Run(connection, Format(L"INSERT INTO {} ({}) VALUES ({})", table, ColumnNames(columns.columns), parameters),
             {&columns});
}

int32_t UpdateRow(sqlite3* connection, std::wstring_view table, const RecordColumns& columns,
                  const RecordColumns& pinned, const RecordColumns& keys) {
  return Run(connection,
             Format(L"UPDATE {} SET {} WHERE {}", table, UpdateAssignments(columns.columns, pinned.columns),
                    Assignments(keys.columns, L" AND ")),
             {&columns, &pinned, &keys});
}

int32_t DeleteRow(sqlite3* connection, std::wstring_view table, const RecordColumns& keys) {
  return Run(connection, Format(L"DELETE FROM {} WHERE {}", table, Assignments(keys.columns, L" AND ")), {&keys});
}
