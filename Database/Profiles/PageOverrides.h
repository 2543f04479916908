#pragma once

#include <span>
#include <string_view>

#include "Database/Profiles/Profile.h"

/// A page whose defaults a profile can override with values of its own.
struct PageOverride {
  bool (*overrides)(const Profile& profile);
  std::span<const std::wstring_view> columns;  // that are then the profile's own, whatever its defaults say later
};

/// The pages whose values are columns of the profile. Preferences and autostart entries are lists beside it.
std::span<const PageOverride> PageOverrides();

/// Whether a profile has preferences of its own once it overrides the defaults. Profiles above 10000 always share those
/// of the profile that they are linked to.
bool CanOwnPreferences(uint32_t profileId);
