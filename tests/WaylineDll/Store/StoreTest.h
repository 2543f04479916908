#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "Database/SQLite/SQLiteHandles.h"
#include "tests/support/FakeDatabasePlatform.h"
#include "tests/support/FileBytes.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TemporaryFolder.h"
#include "WaylineDll/Store/SettingsStore.h"

/// A settings database file of one test, and a second connection to look at it from outside.
class StoreTest : public testing::Test {
 protected:
  /// Creates the database with its sample data and opens it.
  void OpenSample();

  /// Runs statements on the file through a connection of its own; the first row's columns, joined by "|", or
  /// SQLite's message.
  std::string Sql(const std::string& statements) const;

  /// The connection that `store_` uses.
  sqlite3* StoreConnection() const;

  void WriteFile(const std::string& bytes) const;

  LogCapture log_;
  FakeDatabasePlatform platform_;
  TemporaryFolder folder_;
  std::wstring file_ = folder_.File(L"Wayline.db");
  SettingsStore store_;
};

/// The sentence for a file that cannot be used.
std::wstring CannotBeUsed(const std::wstring& file, const std::wstring& reason);

/// The same with the file of the test.
#define EXPECT_UNUSABLE(failure, reason) EXPECT_EQ(failure, CannotBeUsed(file_, reason))

/// A connection that keeps the file locked while it lives.
class FileLock {
 public:
  /// `statements` begin a transaction.
  FileLock(const std::wstring& file, const char* statements);

 private:
  ConnectionHandle connection_;
};
