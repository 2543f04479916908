#include "LoginProperties/ProfilePage/ProfileSelector.h"

#include "Database/Profiles/ProfileIdManager.h"

bool IsSelectable(const Profile& profile) {
  return profile.GetProfileId() > kLastDefaultsId && !profile.Columns().name.empty() && !profile.GetHidden();
}

std::shared_ptr<Profile> FirstSelectableProfile(const ProfileTable& profiles) {
  for (const auto& [id, profile] : profiles) {
    if (profile && IsSelectable(*profile)) return profile;
  }
  return nullptr;
}

std::vector<SelectableProfile> SelectableProfiles(const ProfileTable& profiles) {
  std::vector<SelectableProfile> selectable;
  for (const auto& [key, profile] : profiles) {
    if (profile && IsSelectable(*profile)) selectable.push_back({profile->GetName(), profile->GetProfileId()});
  }
  return selectable;
}

std::shared_ptr<Profile> FindProfile(const ProfileTable& profiles, uint32_t id) {
  const auto found = profiles.find(id);
  return found != profiles.end() ? found->second : nullptr;
}
