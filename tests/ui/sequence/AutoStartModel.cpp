#include "tests/ui/sequence/AutoStartModel.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

// A row as the client reads it: what has no value has the client's.
Row AsRead(Row row) {
  const std::set<std::string> texts = {"Program", "Parameters", "Directory", "DirectoryRegistryKey"};
  for (auto& [column, value] : row) {
    if (value != "NULL") continue;
    value = column == "Modifiable" ? "1" : texts.contains(column) ? "" : "0";
  }
  return row;
}

// Every phase has a header, also where none is stored.
void AddMissingHeaders(std::vector<Row>& rows) {
  static const std::map<std::string, std::string> kTitles = {{"300", "Before connecting"},
                                                             {"700", "After the network is connected"},
                                                             {"1100", "After the VPN is connected"},
                                                             {"1600", "After disconnecting"}};
  for (const auto& [phase, title] : kTitles) {
    if (std::ranges::any_of(
            rows, [&phase](const Row& row) { return row.at("RecordType") == "1" && row.at("Phase") == phase; })) {
      continue;
    }
    rows.push_back(AsRead({{"Phase", phase},
                           {"ItemOrder", "0"},
                           {"RecordType", "1"},
                           {"Name", title},
                           {"Modifiable", "0"},
                           {"Program", "NULL"},
                           {"Parameters", "NULL"},
                           {"Directory", "NULL"},
                           {"DirectoryRegistryKey", "NULL"},
                           {"ShowAdvanced", "NULL"},
                           {"InitialSize", "NULL"},
                           {"ReconnectOption", "NULL"},
                           {"ConnectionOption", "NULL"},
                           {"DelaySeconds", "NULL"},
                           {"WaitMode", "NULL"},
                           {"DefinitionLocked", "1"}}));
  }
}

AutoStartModel::List InForce(uint32_t profile, uint32_t first, const StoredSettings& stored) {
  AutoStartModel::List list;
  for (uint32_t id = first; id != 0; id = stored.LinkOf(id)) {
    const auto found = stored.autoStart.find(id);
    if (found == stored.autoStart.end()) continue;
    list.own = id == profile;
    for (const Row& row : found->second) list.rows.push_back(AsRead(row));
    break;
  }
  AddMissingHeaders(list.rows);
  return list;
}

}  // namespace

const AutoStartModel::List& AutoStartModel::Read(uint32_t profile, uint32_t first, const StoredSettings& stored) {
  if (!lists_.contains(profile)) lists_[profile] = InForce(profile, first, stored);
  return lists_.at(profile);
}

void AutoStartModel::Copy(uint32_t source, uint32_t profile) {
  if (lists_.at(source).own) lists_[profile] = lists_.at(source);
}

void AutoStartModel::Save(uint32_t profile, uint32_t storedId, uint32_t first, bool overrides,
                          StoredSettings& stored) const {
  const auto found = lists_.find(profile);
  const List list = found != lists_.end() ? found->second : InForce(profile, first, stored);
  if (!list.own && !overrides) return;
  for (Row row : list.rows) {
    row["ProfileId"] = std::to_string(storedId);
    stored.autoStart[storedId].push_back(row);
  }
}
