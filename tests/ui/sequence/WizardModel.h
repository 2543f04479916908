#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "Database/Profiles/Profile.h"
#include "tests/ui/sequence/StoredSettings.h"

/// What a user has entered in a wizard, beside what it shows where nothing was.
class WizardModel {
 public:
  /// The profile that the wizard shows, and the row with its servers.
  WizardModel(ProfileColumns profile, Row servers);

  /// Shows another profile where nothing was entered.
  void ShowOther(const ProfileColumns& profile) { shown_ = profile; }

  std::wstring Account() const { return account_.value_or(shown_.account); }
  std::wstring UserId() const { return userId_.value_or(shown_.userId); }
  int32_t Service() const { return service_.value_or(shown_.linkService); }

  /// Where a server comes from, and its value.
  wchar_t Mode(size_t field) const;
  std::string Value(size_t field) const;

  // What is the same as before is no entry.
  void EnterAccount(const std::wstring& text);
  void EnterUserId(const std::wstring& text);
  void EnterService(int32_t service);
  void EnterMode(size_t field, wchar_t mode);
  void EnterValue(size_t field, const std::string& value);

  void StoreUserIdAndService(ProfileColumns& profile) const;

  /// Values are stored only where they are in use.
  void StoreServers(ProfileColumns& profile, Row& servers) const;

  /// The new profile; the user may have left its servers to the network.
  ProfileColumns MakeProfile(Row& servers) const;

  // Of a new profile.
  uint32_t id = 0;
  std::wstring name;
  uint32_t defaults = 0;
  bool setsServers = false;
  uint32_t source = 0;  // to copy from; 0 for none

 private:
  ProfileColumns shown_;
  Row servers_;
  std::optional<std::wstring> account_;
  std::optional<std::wstring> userId_;
  std::optional<int32_t> service_;
  std::map<size_t, wchar_t> modes_;
  std::map<size_t, std::string> values_;
};
