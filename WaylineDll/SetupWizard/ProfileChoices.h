#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Database/Profiles/Preference.h"
#include "Database/Profiles/Profile.h"
#include "WaylineDll/AutoStartItem.h"

/// A profile as it is offered in a list.
struct OfferedProfile {
  std::wstring name;
  uint32_t id;

  bool operator==(const OfferedProfile&) const = default;
};

/// The defaults that a new profile can follow, by id.
std::vector<OfferedProfile> DefaultsToFollow(const ProfileTable& profiles);

/// The profiles that a new one can copy from, by id: all that the user knows, defaults too.
std::vector<OfferedProfile> SourcesToCopy(const ProfileTable& profiles);

/// What is copied from a profile.
struct CopiedSettings {
  std::vector<PreferenceId> preferences;
  bool hasAutoStartList = false;       // even if nothing is started by it
  std::vector<std::wstring> programs;  // names, in the order in which they are started
};

/// What of the lists that are a profile's own the user would notice in a copy.
CopiedSettings CopiedOf(const PreferenceTable& preferences, const AutoStartTable& items);
