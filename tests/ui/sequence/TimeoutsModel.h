#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Database/Profiles/Profile.h"

/// A drop-down list of the page: what it offers, in seconds or bytes, and what is chosen in it.
struct OfferedValues {
  std::vector<int32_t> values;
  std::optional<int32_t> chosen;

  /// Chooses what stands for a stored value.
  void Choose(int32_t stored);
};

/// What a user sees on the "Timeouts" page and what leaving it stores, said without the code of the page.
struct TimeoutsModel {
  /// The page shows a profile, or the defaults that it follows. What was never set in the profile is set by that.
  void Show(ProfileColumns& edited, ProfileColumns defaults);

  /// The page is to give way: stores what was chosen, and tells why that cannot stand.
  std::optional<std::wstring> Leave(ProfileColumns& edited) const;

  bool overrides = false;
  bool boxTicked = false;  // as it is in the profile whose values are shown
  bool durationOn = false;
  bool thresholdOn = false;
  bool warningOn = false;
  OfferedValues duration;
  OfferedValues bytes;
  OfferedValues period;
  OfferedValues warning;
};
