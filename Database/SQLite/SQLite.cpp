#include "Database/SQLite/SQLite.h"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

#include "Database/SQLite/DatabasePlatform.h"
#include "Database/SQLite/DecimalText.h"
#include "Database/SQLite/ReadTransaction.h"
#include "Database/SQLite/SQLiteDatabaseManager.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/FunctionName.h"
#include "NetUtilities/Text/Utf16.h"
#include "NetUtilities/Text/Utf8.h"

namespace {

void LogError(const std::wstring& line) {
  if (databasePlatform.isTraceFlagSet(kDatabaseTraceFlag)) Log(LogSource::Database, LogLevel::Error, line);
  Log(LogLevel::Error, line);
}

std::wstring ErrorText(int32_t code) {
  constexpr size_t kLongest = 256;
  return FromUtf8(sqlite3_errstr(code)).substr(0, kLongest);  // SQLite's texts are plain ASCII
}

void ReadNarrowText(sqlite3_stmt* statement, int index, const ColumnBinding& column, SQLRecord& record) {
  const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement, index));
  if (text == nullptr) return;
  column.write(record, std::string(text, static_cast<size_t>(sqlite3_column_bytes(statement, index))));
}

void ReadText(sqlite3_stmt* statement, int index, const char16_t* text, const ColumnBinding& column,
              SQLRecord& record) {
  const auto length = static_cast<size_t>(sqlite3_column_bytes16(statement, index)) / sizeof(char16_t);
  column.write(record, FromUtf16({text, length}));
}

// Every kind is read through the column's text, whatever SQLite stored. False for an unknown kind.
bool ReadColumn(sqlite3_stmt* statement, int index, const ColumnBinding& column, SQLRecord& record) {
  if (column.kind == ColumnKind::NarrowText) {
    ReadNarrowText(statement, index, column, record);
    return true;
  }
  if (column.kind < ColumnKind::Text || column.kind > ColumnKind::Integer16) return false;
  const auto* const text = static_cast<const char16_t*>(sqlite3_column_text16(statement, index));
  if (text == nullptr) return true;
  switch (column.kind) {
    case ColumnKind::Text:
      ReadText(statement, index, text, column, record);
      break;
    case ColumnKind::Character:
      column.write(record, int64_t{*text});
      break;
    case ColumnKind::Boolean:
      column.write(record, int64_t{ParseInteger32(text)});
      break;
    default:  // integers and keys
      column.write(record, ParseInteger64(text));
  }
  return true;
}

std::wstring ListQuery(std::wstring_view table, const SQLRecord& record) {
  std::wstring query = L"select ";
  std::wstring_view key;
  for (const ColumnBinding& column : record.GetBindings()) {
    if (column.kind == ColumnKind::Key) {
      key = column.name;
      query.append(column.name).append(L", ");
    } else if (column.kind == ColumnKind::ParentKey) {
      query.append(column.name).append(L" from ");
      break;
    }
  }
  return query.append(table).append(L" where ").append(key).append(L" = @recordId;");
}

std::wstring LoadQuery(std::wstring_view table, std::wstring_view condition, const SQLRecord& record) {
  return Format(L"select {} from {} {};", ColumnNames(record.GetBindings()), table, condition);
}

}  // namespace

int32_t SQLite::Open(const std::wstring& directory, const std::wstring& fileName) {
  const auto manager = Singleton<SQLiteDatabaseManager>::Get();
  if (!manager) return SQLITE_CANTOPEN;
  path_ = manager->ComposePath(directory, fileName);
  database_ = manager->GetDatabase(path_);
  return database_->GetResult();
}

int32_t SQLite::Execute(SQLContext& context, std::wstring&& statement, std::vector<int32_t>&& values) {
  statement_ = std::exchange(statement, {});
  values_ = std::exchange(values, {});
  return Run(context);
}

int32_t SQLite::ExecuteWithId(SQLContext& context, const std::wstring& statement, uint32_t id) {
  if (statement_ != statement) statement_ = statement;
  values_.assign(1, static_cast<int32_t>(id));
  return Run(context);
}

int32_t SQLite::Run(SQLContext& context) const {
  int32_t result = context.Prepare(database_, statement_);
  for (size_t index = 0; index < values_.size() && result == SQLITE_OK; ++index) {
    result = sqlite3_bind_int(context.Get(), static_cast<int>(index + 1), values_[index]);
  }
  return result == SQLITE_OK ? context.Step() : result;
}

void SQLite::ReadData(SQLContext& context, SQLRecord* record) const {
  int index = 0;
  for (const ColumnBinding& column : record->GetBindings()) {
    if (ReadColumn(context.Get(), index, column, *record)) {
      ++index;
    } else {
      const std::wstring operation = CleanFunctionName(std::source_location::current().function_name());
      LogError(Format(L"SQLite: {} Error: Error unknown data type - {}", operation, StatementWithParameters()));
    }
  }
}

int32_t SQLite::GetHierarchicalList(std::wstring_view table, const SQLRecord& record, uint32_t id,
                                    std::vector<uint32_t>& list) {
  list.clear();
  const ReadTransaction transaction(database_);
  const std::wstring query = ListQuery(table, record);
  SQLContext context;
  uint32_t current = id;
  uint32_t parent = 0;
  for (;;) {
    int32_t result = ExecuteWithId(context, query, current);
    while (result == SQLITE_ROW) {
      list.push_back(static_cast<uint32_t>(sqlite3_column_int(context.Get(), 0)));
      parent = static_cast<uint32_t>(sqlite3_column_int(context.Get(), 1));
      result = context.Step();
    }
    if (result != SQLITE_DONE) {
      ReportError(result);
      return result;
    }
    if (parent == 0) return result;
    current = parent;
  }
}

int32_t SQLite::LoadHierarchical(std::wstring_view table, std::wstring_view condition, uint32_t id, SQLRecord& record) {
  const ReadTransaction transaction(database_);
  std::vector<uint32_t> chain;
  if (const int32_t result = GetHierarchicalList(table, record, id, chain); result != SQLITE_DONE) return result;
  const std::wstring query = LoadQuery(table, condition, record);
  SQLContext context;
  for (; !chain.empty(); chain.pop_back()) {
    int32_t result = ExecuteWithId(context, query, chain.back());
    if (result == SQLITE_ROW) {
      ReadData(context, &record);
      result = context.Step();
    }
    if (result != SQLITE_DONE) {
      ReportError(result);
      return result;
    }
  }
  return SQLITE_DONE;
}

void SQLite::ReportError(int32_t code, const std::source_location& operation) const {
  if (code == SQLITE_OK) return;
  LogError(Format(L"SQLite: {} Error: {} - {} - {}", CleanFunctionName(operation.function_name()), code,
                  ErrorText(code), StatementWithParameters()));
}

// Pairs the "@" names of the statement with the values, as long as there are both.
std::wstring SQLite::StatementWithParameters() const {
  std::wstring text = statement_;
  size_t start = statement_.find(L'@');
  for (auto value = values_.begin(); value != values_.end() && start != std::wstring::npos; ++value) {
    const size_t end = std::min(statement_.find_first_of(L", );", start), statement_.size());
    const std::wstring_view name = std::wstring_view(statement_).substr(start, end - start);
    if (const size_t at = text.find(name); at != std::wstring::npos)
      text.replace(at, name.size(), std::to_wstring(*value));
    start = statement_.find(L'@', end);
  }
  return text;
}
