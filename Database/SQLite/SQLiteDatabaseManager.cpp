#include "Database/SQLite/SQLiteDatabaseManager.h"

#include <algorithm>
#include <filesystem>

#include "Database/SQLite/DatabasePlatform.h"

SQLiteDatabaseManager::~SQLiteDatabaseManager() {
  for (const auto& database : databases_) database->Close();
}

std::wstring SQLiteDatabaseManager::ComposePath(const std::wstring& directory, const std::wstring& fileName) {
  if (directory.empty() && fileName.empty()) {
    if (std::wstring file = databasePlatform.settingsFile(); !file.empty()) return file;
  }
  const std::filesystem::path folder = directory.empty() ? databasePlatform.userDataDirectory() : directory;
  if (folder.empty()) return {};
  return (folder / (fileName.empty() ? kSettingsDatabaseFile : fileName)).wstring();
}

std::shared_ptr<SQLiteDatabase> SQLiteDatabaseManager::GetDatabase(const std::wstring& path) {
  const std::wstring fullPath = path.empty() ? ComposePath({}, {}) : path;
  const auto known = std::find_if(databases_.begin(), databases_.end(),
                                  [&](const auto& database) { return database->GetPath() == fullPath; });
  if (known != databases_.end()) return *known;
  auto database = std::make_shared<SQLiteDatabase>();
  database->Open(databases_.empty(), fullPath);
  databases_.push_back(database);
  return database;
}
