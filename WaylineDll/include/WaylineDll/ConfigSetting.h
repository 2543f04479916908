#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "Database/SQLite/SQLRecord.h"

/// The proxy and server configuration of one profile: the automatic one holds what the client found in the network, the
/// manual one what the user entered.
class ConfigSetting : public SQLRecord {
 public:
  ConfigSetting() { BindColumns(); }
  ConfigSetting(const ConfigSetting& other) : SQLRecord(other), fields(other.fields) { BindColumns(); }
  ConfigSetting& operator=(const ConfigSetting& other) = default;

  struct Fields {
    int32_t configId = 0;  // the record's key
    int32_t profileId = 0;
    bool automatic = false;  // true for the automatic configuration, false for the manual one
    std::wstring autoProxyUrl;
    std::wstring manualProxy;      // "address:port" entries separated by ";"
    std::wstring proxyExceptions;  // addresses separated by ";"
    std::wstring dns1;
    std::wstring dns2;
    std::wstring wins1;
    std::wstring wins2;
    std::wstring domainName;
    std::wstring searchList;
  } fields;

 private:
  void BindColumns() {
    Bind(L"ConfigId", ColumnKind::Key, &fields.configId);
    Bind(L"ProfileId", ColumnKind::Integer32, &fields.profileId);
    Bind(L"Automatic", ColumnKind::Boolean, &fields.automatic);
    Bind(L"AutoProxyUrl", ColumnKind::Text, &fields.autoProxyUrl);
    Bind(L"ManualProxy", ColumnKind::Text, &fields.manualProxy);
    Bind(L"ProxyExceptions", ColumnKind::Text, &fields.proxyExceptions);
    Bind(L"Dns1", ColumnKind::Text, &fields.dns1);
    Bind(L"Dns2", ColumnKind::Text, &fields.dns2);
    Bind(L"Wins1", ColumnKind::Text, &fields.wins1);
    Bind(L"Wins2", ColumnKind::Text, &fields.wins2);
    Bind(L"DomainName", ColumnKind::Text, &fields.domainName);
    Bind(L"SearchList", ColumnKind::Text, &fields.searchList);
  }
};

/// Configurations by the id of their profile.
using ConfigTable = std::map<uint32_t, std::shared_ptr<ConfigSetting>>;
