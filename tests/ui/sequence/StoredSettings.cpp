#include "tests/ui/sequence/StoredSettings.h"

#include <algorithm>

#include "tests/ui/StoredSheetTest.h"

namespace {

uint32_t ProfileOf(const Row& row) { return static_cast<uint32_t>(std::stoul(row.at("ProfileId"))); }

}  // namespace

uint32_t StoredSettings::LinkOf(uint32_t profile) const {
  const auto row = profiles.find(profile);
  if (row == profiles.end() || row->second.at("LinkProfile") == "NULL") return 0;
  return static_cast<uint32_t>(std::stoul(row->second.at("LinkProfile")));
}

bool StoredSettings::IsFollowed(uint32_t profile) const {
  return std::ranges::any_of(profiles, [&](const auto& entry) { return LinkOf(entry.first) == profile; });
}

uint32_t StoredSettings::Number(const std::string& name) const {
  const auto value = clientState.find(name);
  return value != clientState.end() ? static_cast<uint32_t>(std::stoul(value->second)) : 0;
}

void StoredSettings::Remove(uint32_t profile) {
  profiles.erase(profile);
  preferences.erase(profile);
  autoStart.erase(profile);
  for (const bool automatic : {false, true}) configs.erase({profile, automatic});
  if (Number("ActiveProfile") == profile) clientState.erase("ActiveProfile");
  if (profile < kLastWithOwnPreferences && profile > Number("LastRemovedProfile")) {
    clientState["LastRemovedProfile"] = std::to_string(profile);
  }
}

StoredSettings ReadSettings(const std::wstring& file) {
  StoredSettings stored;
  for (Row& row : RunSql(file, "SELECT * FROM Profiles")) stored.profiles[ProfileOf(row)] = std::move(row);
  for (Row& row : RunSql(file, "SELECT * FROM Preferences")) {
    stored.preferences[ProfileOf(row)][std::stoi(row.at("PreferenceId"))] = std::move(row);
  }
  for (Row& row : RunSql(file, "SELECT * FROM AutoStart ORDER BY Phase, ItemOrder, Id")) {
    row.erase("Id");
    stored.autoStart[ProfileOf(row)].push_back(std::move(row));
  }
  for (Row& row : RunSql(file, "SELECT * FROM ConfigSettings")) {
    row.erase("ConfigId");
    stored.configs[{ProfileOf(row), row.at("Automatic") == "1"}] = std::move(row);
  }
  for (Row& row : RunSql(file, "SELECT * FROM Services")) {
    stored.services[std::stoi(row.at("ServiceId"))] = std::move(row);
  }
  for (const Row& row : RunSql(file, "SELECT * FROM ClientState")) {
    stored.clientState[row.at("Name")] = row.at("Value");
  }
  for (const Row& row : RunSql(file, "SELECT * FROM Bookmarks")) {
    stored.bookmarks[std::stoi(row.at("BookmarkId"))] = row.at("Value");
  }
  return stored;
}

std::multiset<std::string> RowsOf(const StoredSettings& stored) {
  std::multiset<std::string> rows;
  const auto add = [&](const std::string& table, const Row& row) { rows.insert(TextOfRow(table, row)); };
  for (const auto& [id, row] : stored.profiles) add("Profiles", row);
  for (const auto& [id, list] : stored.preferences) {
    for (const auto& [preference, row] : list) add("Preferences", row);
  }
  for (const auto& [id, list] : stored.autoStart) {
    for (const Row& row : list) add("AutoStart", row);
  }
  for (const auto& [id, row] : stored.configs) add("ConfigSettings", row);
  for (const auto& [id, row] : stored.services) add("Services", row);
  for (const auto& [name, value] : stored.clientState) add("ClientState", {{"Name", name}, {"Value", value}});
  for (const auto& [id, value] : stored.bookmarks) {
    add("Bookmarks", {{"BookmarkId", std::to_string(id)}, {"Value", value}});
  }
  return rows;
}
