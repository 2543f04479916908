#include "tests/ui/sequence/WiFiModel.h"

namespace {

constexpr wchar_t kWrongStrength[] = L"Please enter the signal strength percentage value between 10 and 90";

}  // namespace

bool WiFiModel::Overrides(const ProfileColumns& profile) {
  return profile.smUserMayOverrideAutoReconnectDefaults && profile.overrideAutoReconnectDefaults;
}

bool WiFiModel::Automatic(const ProfileColumns& profile) {
  return Overrides(profile) ? profile.overrideARMode : profile.smAutoReconnectMode;
}

bool WiFiModel::Hotspot(const ProfileColumns& profile) {
  return Automatic(profile) && (Overrides(profile) ? profile.overrideASWiFiMode : profile.smAutoSwitchWiFiMode);
}

bool WiFiModel::OwnDetails(const ProfileColumns& profile) { return Overrides(profile) && Hotspot(profile); }

bool WiFiModel::StrengthCanStand(const ProfileColumns& profile) {
  return !Overrides(profile) || (profile.overrideSignalStrength >= 10 && profile.overrideSignalStrength <= 90);
}

std::optional<std::wstring> WiFiModel::LeavePage(const ProfileColumns& profile) {
  auto refusal = LeaveProfile(profile);
  hasGivenWay_ = !refusal;
  return refusal;
}

std::optional<std::wstring> WiFiModel::LeaveProfile(const ProfileColumns& profile) {
  if (StrengthCanStand(profile)) return std::nullopt;
  hasGivenWay_ = false;
  return kWrongStrength;
}

std::optional<std::wstring> WiFiModel::LeaveField(const ProfileColumns& profile) const {
  return hasGivenWay_ || StrengthCanStand(profile) ? std::nullopt : std::optional(kWrongStrength);
}
