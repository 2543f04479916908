#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "Database/Profiles/Profile.h"
#include "WaylineDll/ConfigSetting.h"
#include "WaylineDll/SetupWizard/ServerRules.h"

/// The id of the service that a profile with this link connects to: that of the default service for 0.
uint32_t ServiceInForce(int32_t linkService);

/// What a wizard's pages show and change until it is finished. Where the user has entered nothing, the values are those
/// of the profile, or of the defaults that a new one is to follow. They may be wrong as long as their page is not left
/// with Next.
class WizardDraft {
 public:
  /// The profile and its servers as they are, and the profiles there are, which must outlive this object.
  WizardDraft(const Profile& profile, const ConfigSetting& config, const ProfileTable& profiles);

  std::wstring GetAccount() const { return account_.value_or(Base().account); }
  std::wstring GetUserId() const { return userId_.value_or(Base().userId); }
  int32_t GetLinkService() const { return linkService_.value_or(Base().linkService); }
  ServerSetting GetServer(ServerField field) const;
  ServerSettings GetServers() const;

  // What is there before the user enters anything.

  std::wstring GetAccountBefore() const { return Base().account; }
  std::wstring GetUserIdBefore() const { return Base().userId; }
  ServerSetting GetServerBefore(ServerField field) const;

  // What is the same as before, but for blanks around it, is not taken for an entry of the user.

  void SetAccount(const std::wstring& account);
  void SetUserId(const std::wstring& userId);

  /// By the service's id.
  void SetService(uint32_t serviceId);

  void SetServer(ServerField field, const ServerSetting& server);

  // For a new profile.

  std::wstring name;
  bool setsServers = false;
  uint32_t copySource = 0;  // the profile to copy from; 0 for none

  /// The defaults to follow; 0 as long as there are none.
  uint32_t GetDefaults() const { return defaults_; }
  void SetDefaults(uint32_t id) { defaults_ = id; }

  // What finishing a wizard stores.

  void StoreUserIdAndService(Profile& profile) const;
  void StoreServers(Profile& profile, ConfigSetting& config) const;

  /// The values in force of the defaults with what the user has entered, under the id that the profile has.
  void StoreNewProfile(Profile& profile, ConfigSetting& config) const;

 private:
  struct EnteredServer {
    std::optional<wchar_t> mode;
    std::optional<std::wstring> value;
  };

  const ProfileColumns& Base() const;

  const ProfileTable& profiles_;
  ProfileColumns profile_;
  ConfigSetting config_;
  uint32_t defaults_ = 0;
  std::optional<std::wstring> account_;
  std::optional<std::wstring> userId_;
  std::optional<int32_t> linkService_;
  std::array<EnteredServer, kServerFieldCount> servers_;
};
