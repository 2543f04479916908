#include "tests/ui/OtherConnection.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include "NetUtilities/Text/Utf8.h"

namespace {

ConnectionHandle Open(const std::wstring& file) {
  sqlite3* connection = nullptr;
  EXPECT_EQ(sqlite3_open(ToUtf8(file).c_str(), &connection), SQLITE_OK);
  return ConnectionHandle(connection);
}

}  // namespace

std::vector<Row> RunSql(const std::wstring& file, const std::string& statements) {
  const ConnectionHandle connection = Open(file);
  std::vector<Row> rows;
  const auto add = [](void* target, int count, char** values, char** names) {
    Row& row = static_cast<std::vector<Row>*>(target)->emplace_back();
    for (int column = 0; column < count; ++column) {
      row[names[column]] = values[column] != nullptr ? values[column] : "NULL";
    }
    return 0;
  };
  EXPECT_EQ(sqlite3_exec(connection.get(), statements.c_str(), add, &rows, nullptr), SQLITE_OK)
      << sqlite3_errmsg(connection.get()) << ": " << statements;
  return rows;
}

std::string StoredValue(const std::wstring& file, const std::string& statement) {
  const std::vector<Row> rows = RunSql(file, statement);
  return rows.empty() ? std::string() : rows.front().begin()->second;
}

ConnectionHandle LockDatabase(const std::wstring& file, const std::string& begin) {
  ConnectionHandle connection = Open(file);
  EXPECT_EQ(sqlite3_exec(connection.get(), begin.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
  return connection;
}
