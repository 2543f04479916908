#pragma once

#include <cstdint>
#include <string_view>

#include "Database/Profiles/Profile.h"

/// What speaks against a name for a new profile.
enum class NameProblem {
  None,
  Empty,
  TooLong,
  ControlCharacter,
  Taken,
  TakenByHidden,  // which the user does not see
};

/// Whether a profile with this id may get a name, which has been trimmed, beside the others. A profile that is marked
/// as removed has given its name free.
NameProblem CheckProfileName(std::wstring_view name, uint32_t id, const ProfileTable& profiles);
