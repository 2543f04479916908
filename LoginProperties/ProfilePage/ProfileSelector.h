#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Database/Profiles/Profile.h"

/// One item of a page's profile selector.
struct SelectableProfile {
  std::wstring name;
  uint32_t id;

  bool operator==(const SelectableProfile&) const = default;
};

/// The profiles that a user can select, in ascending id: login profiles (ids above 2000) that have a name and are not
/// hidden.
std::vector<SelectableProfile> SelectableProfiles(const ProfileTable& profiles);

/// The profile with this id; null when there is none.
std::shared_ptr<Profile> FindProfile(const ProfileTable& profiles, uint32_t id);
