#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>

#include "Database/SQLite/MemberBinding.h"
#include "Database/SQLite/SQLRecord.h"

/// The proxy and server configuration of one profile: the automatic one holds what the client found in the network, the
/// manual one what the user entered.
class ConfigSetting : public SQLRecord {
 public:
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

  std::span<const ColumnBinding> GetBindings() const override {
    static constexpr ColumnBinding kBindings[] = {
        BindAs<ColumnKind::Key, &ConfigSetting::fields, &Fields::configId>(L"ConfigId"),
        Bind<&ConfigSetting::fields, &Fields::profileId>(L"ProfileId"),
        Bind<&ConfigSetting::fields, &Fields::automatic>(L"Automatic"),
        Bind<&ConfigSetting::fields, &Fields::autoProxyUrl>(L"AutoProxyUrl"),
        Bind<&ConfigSetting::fields, &Fields::manualProxy>(L"ManualProxy"),
        Bind<&ConfigSetting::fields, &Fields::proxyExceptions>(L"ProxyExceptions"),
        Bind<&ConfigSetting::fields, &Fields::dns1>(L"Dns1"),
        Bind<&ConfigSetting::fields, &Fields::dns2>(L"Dns2"),
        Bind<&ConfigSetting::fields, &Fields::wins1>(L"Wins1"),
        Bind<&ConfigSetting::fields, &Fields::wins2>(L"Wins2"),
        Bind<&ConfigSetting::fields, &Fields::domainName>(L"DomainName"),
        Bind<&ConfigSetting::fields, &Fields::searchList>(L"SearchList"),
    };
    return kBindings;
  }
};

/// Configurations by the id of their profile.
using ConfigTable = std::map<uint32_t, std::shared_ptr<ConfigSetting>>;
