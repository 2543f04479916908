#include "LoginProperties/ProfilePage/ProfileSelector.h"

#include "Database/Profiles/ProfileIdManager.h"

std::vector<SelectableProfile> SelectableProfiles(const ProfileTable& profiles) {
  std::vector<SelectableProfile> selectable;
  for (const auto& [key, profile] : profiles) {
    if (!profile) continue;
    const uint32_t id = profile->GetProfileId();
    std::wstring name = profile->GetName();
    if (id > kLastDefaultsId && !name.empty() && !profile->GetHidden()) selectable.push_back({std::move(name), id});
  }
  return selectable;
}

std::shared_ptr<Profile> FindProfile(const ProfileTable& profiles, uint32_t id) {
  const auto found = profiles.find(id);
  return found != profiles.end() ? found->second : nullptr;
}
