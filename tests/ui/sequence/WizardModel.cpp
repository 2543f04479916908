#include "tests/ui/sequence/WizardModel.h"

#include <utility>

#include "tests/ui/sequence/ServersModel.h"

WizardModel::WizardModel(ProfileColumns profile, Row servers)
    : shown_(std::move(profile)), servers_(std::move(servers)) {}

wchar_t WizardModel::Mode(size_t field) const {
  const auto entered = modes_.find(field);
  return entered != modes_.end() ? entered->second : shown_.*ServerFields()[field].mode;
}

std::string WizardModel::Value(size_t field) const {
  const auto entered = values_.find(field);
  return entered != values_.end() ? entered->second : servers_.at(ServerFields()[field].column);
}

void WizardModel::EnterAccount(const std::wstring& text) {
  if (text != Account()) account_ = text;
}

void WizardModel::EnterUserId(const std::wstring& text) {
  if (text != UserId()) userId_ = text;
}

void WizardModel::EnterService(int32_t service) {
  constexpr int32_t kDefaultService = 400;
  if (service != (Service() != 0 ? Service() : kDefaultService)) service_ = service;
}

void WizardModel::EnterMode(size_t field, wchar_t mode) {
  if (mode != Mode(field)) modes_[field] = mode;
}

void WizardModel::EnterValue(size_t field, const std::string& value) {
  if (value != Value(field)) values_[field] = value;
}

void WizardModel::StoreUserIdAndService(ProfileColumns& profile) const {
  profile.account = Account();
  profile.userId = UserId();
  profile.linkService = Service();
}

void WizardModel::StoreServers(ProfileColumns& profile, Row& servers) const {
  for (size_t field = 0; field < ServerFields().size(); ++field) {
    profile.*ServerFields()[field].mode = Mode(field);
    if (Mode(field) == L'm') servers[ServerFields()[field].column] = Value(field);
  }
}

ProfileColumns WizardModel::MakeProfile(Row& servers) const {
  ProfileColumns profile = shown_;
  profile.profileId = id;
  profile.name = name;
  profile.linkProfile = defaults;
  profile.hidden = false;
  StoreUserIdAndService(profile);
  if (setsServers) StoreServers(profile, servers);
  return profile;
}
