#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <vector>

#include "Database/Profiles/Profile.h"

/// One item of a page's profile selector.
struct SelectableProfile {
  std::wstring name;
  uint32_t id;

  auto operator<=>(const SelectableProfile&) const = default;
};

/// Whether a user can select a profile: a login profile (id above 2000) that has a name and is not hidden.
bool IsSelectable(const Profile& profile);

/// The one with the lowest id; null when there is none.
std::shared_ptr<Profile> FirstSelectableProfile(const ProfileTable& profiles);

/// The profiles that a user can select, in ascending id.
std::vector<SelectableProfile> SelectableProfiles(const ProfileTable& profiles);

/// The profile with this id; null when there is none.
std::shared_ptr<Profile> FindProfile(const ProfileTable& profiles, uint32_t id);
