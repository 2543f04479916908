#include "tests/ui/sequence/ServersModel.h"

const std::vector<ServerField>& ServerFields() {
  static const std::vector<ServerField> fields = {
      {"Dns1", &ProfileColumns::dns1Setting},
      {"Dns2", &ProfileColumns::dns2Setting},
      {"Wins1", &ProfileColumns::wins1Setting},
      {"Wins2", &ProfileColumns::wins2Setting},
      {"DomainName", &ProfileColumns::domainNameSetting},
      {"SearchList", &ProfileColumns::searchListSetting},
  };
  return fields;
}

Row& ServersModel::Read(uint32_t profile, bool isStored, const StoredSettings& stored) {
  const auto [found, isNew] = now_.try_emplace(profile);
  Row& row = found->second;
  if (!isNew) return row;
  if (const auto config = stored.configs.find({profile, false}); isStored && config != stored.configs.end()) {
    row = config->second;
  }
  row["ProfileId"] = std::to_string(profile);
  row["Automatic"] = "0";
  for (const char* column : {"AutoProxyUrl", "ManualProxy", "ProxyExceptions"}) row.try_emplace(column);
  for (const ServerField& field : ServerFields()) row.try_emplace(field.column);
  for (auto& [column, value] : row) {
    if (value == "NULL") value.clear();
  }
  before_[profile] = row;
  return row;
}

bool ServersModel::Save(uint32_t profile, uint32_t storedId, StoredSettings* stored) const {
  const auto now = now_.find(profile);
  if (now == now_.end() || now->second == before_.at(profile)) return false;
  if (stored == nullptr) return true;
  const auto [row, isNew] = stored->configs.try_emplace({storedId, false}, now->second);
  if (isNew) row->second["ProfileId"] = std::to_string(storedId);
  for (const ServerField& field : ServerFields()) {
    const std::string& value = now->second.at(field.column);
    if (value != before_.at(profile).at(field.column)) row->second[field.column] = value;
  }
  return true;
}
