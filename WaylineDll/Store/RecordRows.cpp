#include "WaylineDll/Store/RecordRows.h"

#include <sqlite3.h>

#include <initializer_list>
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

// The values of a record's columns for the parameters of a statement.
struct RowValues {
  const SQLRecord& record;
  Columns columns;
  bool newKeyForZero = false;
};

// Prepares `sql`, binds the values to its parameters in order, and runs it.
int32_t Run(sqlite3* connection, std::wstring_view sql, std::initializer_list<RowValues> parts) {
  Statement statement;
  int32_t code = statement.Prepare(connection, sql);
  int parameter = 1;
  for (const RowValues& part : parts) {
    for (const ColumnBinding& column : part.columns) {
      if (code != SQLITE_OK) return code;
      const ColumnValue value = column.read(part.record);
      const bool leaveNull = part.newKeyForZero && column.kind == ColumnKind::Key && value == ColumnValue(int64_t{0});
      if (!leaveNull) code = BindValue(statement, parameter, column.kind, value);
      ++parameter;
    }
  }
  if (code == SQLITE_OK) code = statement.Step();
  return code == SQLITE_DONE ? SQLITE_OK : code;
}

std::wstring InsertStatement(std::wstring_view verb, std::wstring_view table, Columns columns) {
  std::wstring parameters;
  for (size_t index = 0; index < columns.size(); ++index) parameters += index == 0 ? L"?" : L", ?";
  return Format(L"{} INTO {} ({}) VALUES ({})", verb, table, ColumnNames(columns), parameters);
}

}  // namespace

RecordColumns DifferingColumns(const SQLRecord& record, const SQLRecord& other) {
  RecordColumns differing = {record, {}};
  for (const ColumnBinding& column : record.GetBindings()) {
    if (column.read(record) != column.read(other)) differing.columns.push_back(column);
  }
  return differing;
}

int32_t InsertRow(sqlite3* connection, std::wstring_view table, const RecordColumns& columns) {
  return Run(connection, InsertStatement(L"INSERT", table, columns.columns), {{columns.record, columns.columns}});
}

int32_t ReplaceRow(sqlite3* connection, std::wstring_view table, const SQLRecord& record) {
  const Columns columns = record.GetBindings();
  return Run(connection, InsertStatement(L"INSERT OR REPLACE", table, columns), {{record, columns, true}});
}

int32_t UpdateRow(sqlite3* connection, std::wstring_view table, const RecordColumns& columns,
                  const RecordColumns& keys) {
  return Run(connection,
             Format(L"UPDATE {} SET {} WHERE {}", table, Assignments(columns.columns, L", "),
                    Assignments(keys.columns, L" AND ")),
             {{columns.record, columns.columns}, {keys.record, keys.columns}});
}

int32_t DeleteRow(sqlite3* connection, std::wstring_view table, const RecordColumns& keys) {
  return Run(connection, Format(L"DELETE FROM {} WHERE {}", table, Assignments(keys.columns, L" AND ")),
             {{keys.record, keys.columns}});
}
