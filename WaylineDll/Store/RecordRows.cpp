#include "WaylineDll/Store/RecordRows.h"

#include <sqlite3.h>

#include <cstring>
#include <string>
#include <variant>

#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/Utf8.h"
#include "WaylineDll/Store/Statement.h"

namespace {

using ColumnValue = std::variant<int64_t, std::wstring>;

// Members that are enumerations are read as the integers that they are made of.
template <typename T>
T ReadAs(const void* member) {
  T value;
  std::memcpy(&value, member, sizeof(value));
  return value;
}

ColumnValue ValueOf(const ColumnBinding& column) {
  switch (column.kind) {
    case ColumnKind::Text:
      return *static_cast<const std::wstring*>(column.member);
    case ColumnKind::Character: {
      const auto character = ReadAs<wchar_t>(column.member);
      return character != L'\0' ? std::wstring(1, character) : std::wstring();
    }
    case ColumnKind::NarrowText:
      return FromUtf8(*static_cast<const std::string*>(column.member));
    case ColumnKind::Integer64:
      return ReadAs<int64_t>(column.member);
    case ColumnKind::Boolean:
      return int64_t{ReadAs<bool>(column.member)};
    case ColumnKind::Integer16:
      return int64_t{ReadAs<uint16_t>(column.member)};
    case ColumnKind::Integer32:
    case ColumnKind::Key:
    case ColumnKind::ParentKey:
      break;
  }
  return int64_t{ReadAs<int32_t>(column.member)};
}

int32_t BindValue(Statement& statement, int parameter, const ColumnValue& value) {
  const auto* text = std::get_if<std::wstring>(&value);
  return text != nullptr ? statement.BindText(parameter, *text)
                         : statement.BindInteger(parameter, std::get<int64_t>(value));
}

// "A = ?, B = ?" with `separator` between the columns.
std::wstring Assignments(const ColumnList& columns, std::wstring_view separator) {
  std::wstring text;
  for (const ColumnBinding& column : columns) {
    if (!text.empty()) text += separator;
    text += column.name + L" = ?";
  }
  return text;
}

// Prepares `sql`, binds the values of `columns` to its parameters in order, and runs it.
int32_t Run(sqlite3* connection, std::wstring_view sql, const ColumnList& columns, bool newKeyForZero = false) {
  Statement statement;
  int32_t code = statement.Prepare(connection, sql);
  int parameter = 1;
  for (const ColumnBinding& column : columns) {
    if (code != SQLITE_OK) return code;
    const ColumnValue value = ValueOf(column);
    const bool leaveNull = newKeyForZero && column.kind == ColumnKind::Key && value == ColumnValue(int64_t{0});
    if (!leaveNull) code = BindValue(statement, parameter, value);
    ++parameter;
  }
  if (code == SQLITE_OK) code = statement.Step();
  return code == SQLITE_DONE ? SQLITE_OK : code;
}

std::wstring InsertStatement(std::wstring_view verb, std::wstring_view table, const ColumnList& columns) {
  std::wstring parameters;
  for (size_t index = 0; index < columns.size(); ++index) parameters += index == 0 ? L"?" : L", ?";
  return Format(L"{} INTO {} ({}) VALUES ({})", verb, table, ColumnNames(columns), parameters);
}

}  // namespace

ColumnList DifferingColumns(const SQLRecord& record, const SQLRecord& other) {
  ColumnList differing;
  const ColumnList& columns = record.GetBindings();
  const ColumnList& others = other.GetBindings();
  for (size_t index = 0; index < columns.size(); ++index) {
    if (ValueOf(columns[index]) != ValueOf(others[index])) differing.push_back(columns[index]);
  }
  return differing;
}

int32_t InsertRow(sqlite3* connection, std::wstring_view table, const ColumnList& columns) {
  return Run(connection, InsertStatement(L"INSERT", table, columns), columns);
}

int32_t ReplaceRow(sqlite3* connection, std::wstring_view table, const ColumnList& columns) {
  return Run(connection, InsertStatement(L"INSERT OR REPLACE", table, columns), columns, true);
}

int32_t UpdateRow(sqlite3* connection, std::wstring_view table, const ColumnList& columns, const ColumnList& keys) {
  ColumnList parameters = columns;
  parameters.insert(parameters.end(), keys.begin(), keys.end());
  return Run(connection,
             Format(L"UPDATE {} SET {} WHERE {}", table, Assignments(columns, L", "), Assignments(keys, L" AND ")),
             parameters);
}

int32_t DeleteRow(sqlite3* connection, std::wstring_view table, const ColumnList& keys) {
  return Run(connection, Format(L"DELETE FROM {} WHERE {}", table, Assignments(keys, L" AND ")), keys);
}
