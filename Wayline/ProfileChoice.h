#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "Database/Profiles/Profile.h"
#include "WaylineDll/SettingsTables.h"

/// Finds the profile that the sheet starts with: the one that the user wants, else the active one, else the first that
/// can be selected at all. None where there is none yet: the user can make the first on the sheet. Fails when the one
/// that the user wants cannot be selected.
Failure ChooseProfile(const ProfileTable& profiles, std::optional<uint32_t> wantedId, uint32_t activeId,
                      std::shared_ptr<Profile>& chosen);
