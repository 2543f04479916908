#include "WaylineDll/SetupWizard/ServerRules.h"

#include "WaylineDll/SetupWizard/FieldRules.h"
#include "WaylineDll/SetupWizard/PlatformText.h"

namespace {

// Where a profile and its configuration keep a setting.
struct Place {
  wchar_t ProfileColumns::*mode;
  std::wstring ConfigSetting::Fields::*value;
};

constexpr std::array<Place, kServerFieldCount> kPlaces = {{
    {&ProfileColumns::dns1Setting, &ConfigSetting::Fields::dns1},
    {&ProfileColumns::dns2Setting, &ConfigSetting::Fields::dns2},
    {&ProfileColumns::wins1Setting, &ConfigSetting::Fields::wins1},
    {&ProfileColumns::wins2Setting, &ConfigSetting::Fields::wins2},
    {&ProfileColumns::domainNameSetting, &ConfigSetting::Fields::domainName},
    {&ProfileColumns::searchListSetting, &ConfigSetting::Fields::searchList},
}};

std::optional<std::wstring> If(bool accepted, const std::wstring& text) {
  return accepted ? std::optional(text) : std::nullopt;
}

}  // namespace

ServerSettings ReadServers(const ProfileColumns& profile, const ConfigSetting& config) {
  ServerSettings servers;
  for (size_t index = 0; index < kServerFieldCount; ++index) {
    servers[index] = {profile.*kPlaces[index].mode, config.fields.*kPlaces[index].value};
  }
  return servers;
}

void WriteServers(const ServerSettings& servers, ProfileColumns& profile, ConfigSetting& config) {
  for (size_t index = 0; index < kServerFieldCount; ++index) {
    profile.*kPlaces[index].mode = servers[index].mode;
    if (servers[index].mode == kManualServer) config.fields.*kPlaces[index].value = servers[index].value;
  }
}

std::optional<std::wstring> AcceptedServer(ServerField field, const std::wstring& text) {
  switch (field) {
    case ServerField::Dns1:
    case ServerField::Dns2:
      return If(IsIpAddress(IpVersion::V4, text) || IsIpAddress(IpVersion::V6, text), text);
    case ServerField::Wins1:
    case ServerField::Wins2:
      return If(IsIpAddress(IpVersion::V4, text), text);
    case ServerField::DomainName:
      return If(IsDomainName(text), text);
    case ServerField::SearchList:
      return SuffixList(text);
  }
  return std::nullopt;
}
