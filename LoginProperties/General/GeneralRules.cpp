#include "LoginProperties/General/GeneralRules.h"

#include <algorithm>
#include <vector>

#include "LoginProperties/ProfilePage/ProfileSelector.h"

namespace {

std::vector<const Profile*> FollowersOf(const ProfileTable& profiles, uint32_t id) {
  std::vector<const Profile*> followers;
  for (const auto& [key, profile] : profiles) {
    if (profile && profile->GetLinkProfile() == id && profile->GetState() != ChangeState::Removed) {
      followers.push_back(profile.get());
    }
  }
  return followers;
}

}  // namespace

RemovalRefusal RefuseRemoval(const ProfileTable& profiles, const Profile& profile, uint32_t active, bool isConnected) {
  if (SelectableProfiles(profiles).size() <= 1) return RemovalRefusal::LastProfile;
  if (!IsSelectable(profile)) return RemovalRefusal::NotListed;
  if (profile.GetProfileId() == active && isConnected) return RemovalRefusal::Connected;
  if (!FollowersOf(profiles, profile.GetProfileId()).empty()) return RemovalRefusal::Followed;
  return RemovalRefusal::None;
}

std::wstring NamesOfFollowers(const ProfileTable& profiles, uint32_t id) {
  constexpr size_t kMost = 10;
  const std::vector<const Profile*> followers = FollowersOf(profiles, id);
  std::wstring names;
  for (size_t index = 0; index < std::min(followers.size(), kMost); ++index) {
    const std::wstring name = followers[index]->GetName();
    if (index > 0) names += L", ";
    names += !name.empty() ? name : std::to_wstring(followers[index]->GetProfileId());
  }
  return followers.size() > kMost ? names + L", ..." : names;
}

std::shared_ptr<Profile> RemoveProfile(const ProfileTable& profiles, Profile& profile) {
  profile.SetState(ChangeState::Removed);
  profile.SetHidden(true);
  return FirstSelectableProfile(profiles);
}

void TakeUserIdAndService(const Profile& edited, Profile& profile) {
  bool changed = false;
  if (edited.GetAccount() != profile.GetAccount() || edited.GetUserId() != profile.GetUserId()) {
    profile.SetAccount(edited.GetAccount());
    profile.SetUserId(edited.GetUserId());
    changed = true;
  }
  if (edited.GetHexDigCertHash() != profile.GetHexDigCertHash()) {
    profile.SetHexDigCertHash(edited.GetHexDigCertHash());
    changed = true;
  }
  if (edited.GetLinkService() != profile.GetLinkService()) {
    profile.SetLinkService(edited.GetLinkService());
    changed = true;
  }
  if (changed) profile.SetState(ChangeState::Changed);
}
