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

  /// Names of the files beside the database and of itself, sorted.
  std::vector<std::string> FilesInFolder() const;

  LogCapture log_;
  FakeDatabasePlatform platform_;
  TemporaryFolder folder_;
  std::wstring file_ = folder_.File(L"Wayline.db");
  SettingsStore store_;
};

/// The same with its records loaded, as the client has them while a sheet is open.
class LoadedStoreTest : public StoreTest {
 protected:
  void SetUp() override;

  Profile& ProfileOf(uint32_t id) { return *tables_.profiles.at(id); }

  /// A new profile with the values in force of the one that it follows.
  Profile& AddProfile(uint32_t id, uint32_t parent);

  /// A record of a profile's list, as the store hands it out.
  std::shared_ptr<Preference> PreferenceOf(uint32_t profileId, PreferenceId id);
  std::shared_ptr<AutoStartItem> AutoStartOf(uint32_t profileId, const std::wstring& name);

  /// Saves, which succeeds and loses nothing.
  void SaveSucceeds();

  /// Saving fails with this sentence, lists no changes and leaves the file byte for byte as it is.
  void SaveFails(const std::wstring& sentence);

  SettingsTables tables_;
  SaveReport report_;
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
