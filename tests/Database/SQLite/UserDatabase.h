#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <string>

#include "Database/SQLite/SQLiteDatabaseManager.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/FakeDatabasePlatform.h"
#include "tests/support/TemporaryFolder.h"

/// While it lives, the settings database of the user is a file of the test's own, which does not exist at first. The
/// layer's connection to it, if there is one, is closed with the object.
class UserDatabase {
 public:
  UserDatabase() { FakeDatabasePlatform::state.userDataDirectory = folder_.Path().wstring(); }
  ~UserDatabase() { Shared()->Close(); }
  UserDatabase(const UserDatabase&) = delete;
  UserDatabase& operator=(const UserDatabase&) = delete;

  std::wstring File() const { return folder_.File(kSettingsDatabaseFile); }
  std::filesystem::path Folder() const { return folder_.Path(); }

  /// Runs statements through a connection of their own; the file is created if it is missing.
  void Run(const std::string& statements) const {
    sqlite3* connection = nullptr;
    sqlite3_open(ToUtf8(File()).c_str(), &connection);
    EXPECT_EQ(sqlite3_exec(connection, statements.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(connection);
    EXPECT_EQ(sqlite3_close(connection), SQLITE_OK);
  }

  /// What the layer has open, or tried to open, for this file; opens it on the first call.
  std::shared_ptr<SQLiteDatabase> Shared() const {
    return Singleton<SQLiteDatabaseManager>::Get()->GetDatabase(File());
  }

 private:
  FakeDatabasePlatform platform_;
  TemporaryFolder folder_;
};
