#include "WaylineDll/SetupWizard/WizardDraft.h"

#include "Database/Profiles/PageOverrides.h"
#include "Database/Profiles/ServiceInfo.h"
#include "WaylineDll/SetupWizard/FieldRules.h"

namespace {

// Nothing where the text is what was there before.
std::optional<std::wstring> Entry(const std::wstring& text, const std::wstring& before) {
  return text == Trimmed(before) ? std::nullopt : std::optional(text);
}

}  // namespace

uint32_t ServiceInForce(int32_t linkService) {
  return linkService != 0 ? static_cast<uint32_t>(linkService) : ServiceInfo::kDefaultService;
}

WizardDraft::WizardDraft(const Profile& profile, const ConfigSetting& config, const ProfileTable& profiles)
    : profiles_(profiles), profile_(profile.Columns()), config_(config) {}

const ProfileColumns& WizardDraft::Base() const {
  const auto found = profiles_.find(defaults_);
  return defaults_ != 0 && found != profiles_.end() && found->second ? found->second->Columns() : profile_;
}

ServerSetting WizardDraft::GetServer(ServerField field) const { return GetServers()[static_cast<size_t>(field)]; }

ServerSettings WizardDraft::GetServers() const {
  ServerSettings servers = ReadServers(Base(), config_);
  for (size_t index = 0; index < kServerFieldCount; ++index) {
    servers[index].mode = servers_[index].mode.value_or(servers[index].mode);
    servers[index].value = servers_[index].value.value_or(servers[index].value);
  }
  return servers;
}

ServerSetting WizardDraft::GetServerBefore(ServerField field) const {
  return ReadServers(Base(), config_)[static_cast<size_t>(field)];
}

void WizardDraft::SetAccount(const std::wstring& account) { account_ = Entry(account, GetAccountBefore()); }

void WizardDraft::SetUserId(const std::wstring& userId) { userId_ = Entry(userId, GetUserIdBefore()); }

void WizardDraft::SetService(uint32_t serviceId) {
  if (serviceId != ServiceInForce(GetLinkService())) linkService_ = static_cast<int32_t>(serviceId);
}

void WizardDraft::SetServer(ServerField field, const ServerSetting& server) {
  const ServerSetting before = GetServerBefore(field);
  EnteredServer& entered = servers_[static_cast<size_t>(field)];
  entered.mode = server.mode != before.mode ? std::optional(server.mode) : std::nullopt;
  entered.value = Entry(server.value, before.value);
}

void WizardDraft::StoreUserIdAndService(Profile& profile) const {
  profile.SetAccount(GetAccount());
  profile.SetUserId(GetUserId());
  profile.SetLinkService(GetLinkService());
}

void WizardDraft::StoreServers(Profile& profile, ConfigSetting& config) const {
  WriteServers(GetServers(), profile.Columns(), config);
}

void WizardDraft::StoreNewProfile(Profile& profile, ConfigSetting& config) const {
  ProfileColumns columns = Base();
  columns.profileId = profile_.profileId;
  columns.linkProfile = defaults_ != 0 ? defaults_ : profile_.linkProfile;
  columns.name = name;
  columns.hidden = false;
  columns.account = GetAccount();
  columns.userId = GetUserId();
  columns.linkService = GetLinkService();
  if (setsServers) WriteServers(GetServers(), columns, config);
  if (const auto source = profiles_.find(copySource); copySource != 0 && source != profiles_.end()) {
    // One that shares the preferences of others has none to override with.
    if (CanOwnPreferences(copySource)) columns.defaultPreferences = source->second->GetDefaultPreferences();
    columns.defaultAutostart = source->second->GetDefaultAutostart();
  }
  profile.Columns() = std::move(columns);
}
