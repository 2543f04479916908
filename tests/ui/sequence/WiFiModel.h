#pragma once

#include <optional>
#include <string>

#include "Database/Profiles/Profile.h"

/// What a user sees on the "Wi-Fi Switching" page of a profile, and when its fields are checked.
class WiFiModel {
 public:
  static bool Overrides(const ProfileColumns& profile);
  static bool Automatic(const ProfileColumns& profile);
  static bool Hotspot(const ProfileColumns& profile);

  /// Whether the rest of the page can be edited.
  static bool OwnDetails(const ProfileColumns& profile);

  static bool StrengthCanStand(const ProfileColumns& profile);

  /// The page is asked to give way to another page and to OK, or to another profile; what the user is told when it does
  /// not.
  std::optional<std::wstring> LeavePage(const ProfileColumns& profile);
  std::optional<std::wstring> LeaveProfile(const ProfileColumns& profile);

  /// The focus leaves a field of the page; what the user is told then. Fields are checked at once until the page has
  /// given way for the first time.
  std::optional<std::wstring> LeaveField(const ProfileColumns& profile) const;

 private:
  bool hasGivenWay_ = false;
};
