#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Database/Profiles/Profile.h"
#include "LoginProperties/Timeouts/TimeoutText.h"

/// One item of a drop-down list: what it shows, and its value in seconds or bytes.
struct Preset {
  std::wstring text;
  uint32_t value;
};

/// How far the administrator lets the presets go, in seconds and bytes.
struct PresetLimits {
  int64_t longestDuration;
  int64_t longestWarning;
  int64_t longestPeriod;
  int64_t fewestBytes;
};

/// The limits that a profile carries; without one of its own a list is not cut.
PresetLimits LimitsOf(const Profile& profile);

/// The durations of a preset list in the list's order, without those above `longest` and 0. The list holds decimal
/// numbers separated by blanks, commas, semicolons or tabs; one that is no 32-bit number raises std::invalid_argument
/// or std::out_of_range.
std::vector<Preset> DurationPresets(std::wstring_view list, int64_t longest, const DurationUnits& units);

/// As DurationPresets for numbers of bytes, without those below `fewest` and those that are not positive.
std::vector<Preset> BytePresets(std::wstring_view list, int64_t fewest, const ByteUnits& units);

/// Index of the item that stands for a stored value: the first that is not less than its magnitude, else the last (-1
/// when there is none). A value of 0 gives the second item, whatever the list holds.
int IndexForValue(const std::vector<uint32_t>& items, int64_t value);
