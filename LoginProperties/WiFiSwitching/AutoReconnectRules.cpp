#include "LoginProperties/WiFiSwitching/AutoReconnectRules.h"

#include <algorithm>
#include <cwchar>
#include <limits>

namespace {

// Longer than what can be typed: a stored interval may have come from elsewhere.
constexpr size_t kShownIntervalLength = 9;

constexpr int32_t kLeastStrength = 10;
constexpr int32_t kGreatestStrength = 90;

// The user's values are in force.
bool Overrides(const Profile& profile) {
  return profile.GetSMUserMayOverrideAutoReconnectDefaults() && profile.GetOverrideAutoReconnectDefaults();
}

std::wstring NumberText(int32_t number, size_t length) { return std::to_wstring(number).substr(0, length); }

}  // namespace

ShownReconnect ShownReconnectOf(const Profile& profile) {
  ShownReconnect shown{};
  shown.overrides = Overrides(profile);
  shown.automatic = shown.overrides ? profile.GetOverrideARMode() : profile.GetSMAutoReconnectMode();
  shown.hotspot =
      shown.automatic && (shown.overrides ? profile.GetOverrideASWiFiMode() : profile.GetSMAutoSwitchWiFiMode());

  const bool ownDetails = shown.overrides && shown.hotspot;
  shown.prompt = ownDetails ? profile.GetOverridePromptUserToSwitch() : profile.GetSMPromptUserToSwitch();
  shown.interval = NumberText(ownDetails ? profile.GetOverrideSwitchInterval() : profile.GetSMSwitchInterval(),
                              kShownIntervalLength);
  shown.strength =
      NumberText(ownDetails ? profile.GetOverrideSignalStrength() : profile.GetSMSignalStrength(), kStrengthDigits);

  shown.atOnce = profile.GetAdvancedAutoReconnectSettings() == kReconnectAtOnce;
  return shown;
}

EnabledReconnect EnabledReconnectOf(const Profile& profile) {
  EnabledReconnect enabled{};
  enabled.overrides = profile.GetSMUserMayOverrideAutoReconnectDefaults();
  enabled.automatic = Overrides(profile);
  enabled.hotspot = enabled.automatic && profile.GetOverrideARMode();
  enabled.details = enabled.hotspot && profile.GetOverrideASWiFiMode();
  return enabled;
}

bool IsStrengthAllowed(const Profile& profile) {
  const int32_t strength = profile.GetOverrideSignalStrength();
  return !Overrides(profile) || (strength >= kLeastStrength && strength <= kGreatestStrength);
}

void StoreTyped(const std::wstring& interval, const std::wstring& strength, Profile& profile) {
  if (!EnabledReconnectOf(profile).details) return;
  const ShownReconnect shown = ShownReconnectOf(profile);
  if (interval != shown.interval) profile.SetOverrideSwitchInterval(ToNumber(interval));
  if (strength != shown.strength) profile.SetOverrideSignalStrength(ToNumber(strength));
}

int32_t ToNumber(const std::wstring& text) {
  // At the ends of its range `long` is as wide as it likes.
  using Limits = std::numeric_limits<int32_t>;
  return static_cast<int32_t>(std::clamp<long>(std::wcstol(text.c_str(), nullptr, 10), Limits::min(), Limits::max()));
}
