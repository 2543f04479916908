#include "tests/WaylineDll/Store/StoreTest.h"

#include <sqlite3.h>

#include <algorithm>
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

void LoadedStoreTest::SetUp() {
  OpenSample();
  ASSERT_EQ(store_.LoadProfiles(tables_.profiles), Failure());
}

Profile& LoadedStoreTest::AddProfile(uint32_t id, uint32_t parent) {
  const auto profile = std::make_shared<Profile>(ProfileOf(parent));
  profile->Columns().profileId = id;
  profile->Columns().linkProfile = parent;
  profile->SetName(L"New");
  profile->SetState(ChangeState::New);
  tables_.profiles[id] = profile;
  return *profile;
}

std::shared_ptr<Preference> LoadedStoreTest::PreferenceOf(uint32_t profileId, PreferenceId id) {
  PreferenceTable preferences;
  EXPECT_TRUE(store_.LoadPreferences(profileId, preferences));
  return preferences.at(id);
}

std::shared_ptr<AutoStartItem> LoadedStoreTest::AutoStartOf(uint32_t profileId, const std::wstring& name) {
  AutoStartTable items;
  EXPECT_TRUE(store_.LoadAutoStart(profileId, items));
  const auto found = std::ranges::find_if(items, [&](const auto& item) { return item.second->fields.name == name; });
  EXPECT_NE(found, items.end()) << ToUtf8(name);
  return found->second;
}

void LoadedStoreTest::SaveSucceeds() {
  ASSERT_EQ(store_.Save(tables_, report_), Failure());
  EXPECT_THAT(report_.lost, testing::IsEmpty());
}

void LoadedStoreTest::SaveFails(const std::wstring& sentence) {
  const std::string before = FileBytes(file_);
  EXPECT_EQ(store_.Save(tables_, report_), Failure(sentence));
  EXPECT_THAT(report_.changes, testing::IsEmpty());
  EXPECT_TRUE(FileBytes(file_) == before) << "the file has changed";
  EXPECT_NE(sqlite3_get_autocommit(StoreConnection()), 0) << "a transaction is still open";
}

std::vector<std::string> StoreTest::FilesInFolder() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
    names.push_back(entry.path().filename().string());
  }
  std::ranges::sort(names);
  return names;
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
