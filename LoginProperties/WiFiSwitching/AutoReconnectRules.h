#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "Database/Profiles/Profile.h"

/// How many digits the user can type.
inline constexpr size_t kStrengthDigits = 2;
inline constexpr size_t kIntervalDigits = 4;

/// What a profile stores of the choice for a lost connection. Any other value waits too.
inline constexpr int32_t kWaitForVpnTimeout = 0;
inline constexpr int32_t kReconnectAtOnce = 1;

/// What the page shows of a profile.
struct ShownReconnect {
  bool overrides;
  bool automatic;
  bool hotspot;  // never without `automatic`
  bool prompt;
  std::wstring interval;  // seconds, at most nine characters of them
  std::wstring strength;  // percent, at most two characters of them
  bool atOnce;            // when the connection is lost; otherwise after the VPN timeout

  bool operator==(const ShownReconnect&) const = default;
};

/// What to show of `profile`: the user's values while they are in force, otherwise the administrator's. Under the
/// user's values the details of a switch to a hotspot are the administrator's as long as that switch is off.
ShownReconnect ShownReconnectOf(const Profile& profile);

/// Which controls the user can change. What is to be done when the connection is lost can always be changed.
struct EnabledReconnect {
  bool overrides;
  bool automatic;
  bool hotspot;
  bool details;  // prompt, interval and strength

  bool operator==(const EnabledReconnect&) const = default;
};

EnabledReconnect EnabledReconnectOf(const Profile& profile);

/// Whether the user's signal strength can stand: it is from 10 to 90 percent, or the user's values are not in force. It
/// counts also while the switch to a hotspot is off; the interval is never checked.
bool IsStrengthAllowed(const Profile& profile);

/// Stores in `profile` what the user has typed into the two fields, as far as they can be changed. A text that is what
/// the page shows of the profile is not stored: a number that is too long for its field is shown in part.
void StoreTyped(const std::wstring& interval, const std::wstring& strength, Profile& profile);

/// The number that a text begins with, behind white space and a sign; 0 when there is none, and the nearest that 32
/// bits hold when it is larger.
int32_t ToNumber(const std::wstring& text);
