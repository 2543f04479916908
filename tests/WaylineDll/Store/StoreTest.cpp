#include "tests/WaylineDll/Store/StoreTest.h"

#include <sqlite3.h>

#include <filesystem>
#include <fstream>

#include "Database/SQLite/SQLiteDatabaseManager.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/Utf8.h"

void StoreTest::OpenSample() { ASSERT_EQ(store_.Open(file_), Failure()); }

std::string StoreTest::Sql(const std::string& statements) const {
  sqlite3* connection = nullptr;
  sqlite3_open(ToUtf8(file_).c_str(), &connection);
  std::string row;
  const auto joinColumns = [](void* target, int count, char** values, char**) {
    std::string& text = *static_cast<std::string*>(target);
    if (!text.empty()) return 0;
    for (int column = 0; column < count; ++column) {
      if (column > 0) text += '|';
      text += values[column] != nullptr ? values[column] : "NULL";
    }
    return 0;
  };
  if (sqlite3_exec(connection, statements.c_str(), joinColumns, &row, nullptr) != SQLITE_OK) {
    row = sqlite3_errmsg(connection);
  }
  sqlite3_close(connection);
  return row;
}

sqlite3* StoreTest::StoreConnection() const {
  return Singleton<SQLiteDatabaseManager>::Get()->GetDatabase(file_)->GetConnection();
}

void StoreTest::WriteFile(const std::string& bytes) const {
  std::ofstream(std::filesystem::path(file_), std::ios::binary) << bytes;
}

std::wstring CannotBeUsed(const std::wstring& file, const std::wstring& reason) {
  return Format(L"The file \"{}\" cannot be used: {}.", file, reason);
}

FileLock::FileLock(const std::wstring& file, const char* statements) {
  sqlite3* opened = nullptr;
  sqlite3_open(ToUtf8(file).c_str(), &opened);
  connection_.reset(opened);
  EXPECT_EQ(sqlite3_exec(opened, statements, nullptr, nullptr, nullptr), SQLITE_OK);
}
