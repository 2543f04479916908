#include "LoginProperties/Timeouts/TimeoutRules.h"

#include "LoginProperties/ProfilePage/ProfileSelector.h"
#include "WaylineDll/TimeoutValues.h"

namespace {

using Seconds = Profile::Seconds;

constexpr Seconds kDefaultWarning{60};
constexpr Seconds kRememberedEightHours{-28800};  // off, but eight hours when switched on
constexpr Seconds kDefaultDuration{28800};

Seconds ToSeconds(uint32_t value) { return Seconds(static_cast<int32_t>(value)); }

}  // namespace

ShownTimeouts PrepareTimeouts(Profile& profile) {
  ShownTimeouts shown{};
  shown.overrides = !profile.GetDefaultTimeouts();

  shown.warningOn = profile.GetWarnTime() > Seconds(0);
  if (profile.GetWarnTime() == Seconds(0)) profile.SetWarnTime(kDefaultWarning);

  shown.durationOn = profile.GetDurationTime() > Seconds(0);
  if (profile.GetDurationTime() == Seconds(0)) profile.SetDurationTime(kRememberedEightHours);

  shown.thresholdOn = profile.GetThresholdTimeOut() > Seconds(0) && profile.GetThresholdOnOff();
  profile.SetThresholdOnOff(shown.thresholdOn);
  if (profile.GetThresholdTimeOut() == Seconds(0)) profile.SetThresholdTimeOut(kRememberedEightHours);

  shown.warning = profile.GetWarnTime().count();
  shown.duration = profile.GetDurationTime().count();
  shown.thresholdPeriod = profile.GetThresholdTimeOut().count();
  shown.thresholdBytes = profile.GetThresholdBytes();
  return shown;
}

std::optional<TimeoutProblem> StoreTimeouts(const ChosenTimeouts& chosen, Profile& profile) {
  using Kind = TimeoutProblem::Kind;
  std::optional<TimeoutProblem> missing;

  if (chosen.durationOn) {
    if (chosen.duration) {
      profile.SetDurationTime(ToSeconds(*chosen.duration));
    } else {
      missing = {Kind::ValueMissing, TimeoutList::Duration};
    }
    if (profile.GetDurationTime() == Seconds(0)) profile.SetDurationTime(kDefaultDuration);
  } else {
    profile.SetDurationTime(Seconds(0));
  }

  if (!chosen.thresholdOn) {
    profile.SetThresholdTimeOut(Seconds(0));
    profile.SetThresholdBytes(0);
  } else if (!chosen.thresholdBytes) {
    missing = {Kind::ValueMissing, TimeoutList::ThresholdBytes};
  } else if (!chosen.thresholdPeriod) {
    missing = {Kind::ValueMissing, TimeoutList::ThresholdPeriod};
  } else {
    profile.SetThresholdTimeOut(ToSeconds(*chosen.thresholdPeriod));
    profile.SetThresholdBytes(static_cast<int32_t>(*chosen.thresholdBytes));
  }

  if (chosen.warningOn) {
    if (!chosen.warning) return TimeoutProblem{Kind::ValueMissing, TimeoutList::Warning};
    profile.SetWarnTime(ToSeconds(*chosen.warning));
  } else {
    // The sign is turned round, not made negative: a warning that is off already comes back with the next validation.
    profile.SetWarnTime(-profile.GetWarnTime());
  }
  if (missing) return missing;

  const Seconds warning = profile.GetWarnTime();
  const auto endsTooSoon = [warning](Seconds limit) { return limit > Seconds(0) && limit <= warning; };
  if (endsTooSoon(profile.GetSMIdleTime()) || endsTooSoon(profile.GetDurationTime()) ||
      endsTooSoon(profile.GetThresholdTimeOut())) {
    return TimeoutProblem{Kind::WarningTooLong, TimeoutList::Warning};
  }
  return std::nullopt;
}

std::shared_ptr<Profile> FindLinkedDefault(std::shared_ptr<Profile>& cached, const ProfileTable& profiles,
                                           uint32_t linkProfile) {
  if (cached && cached->GetProfileId() == linkProfile) return cached;
  if (auto found = FindProfile(profiles, linkProfile)) cached = std::move(found);
  return cached;
}

std::optional<std::wstring> InactivityLimitText(int64_t reported, int64_t administratorLimit,
                                                const InactivityWords& words, const DurationUnits& units) {
  if (reported == 0) return std::nullopt;
  if (reported == kUnknownTimeout.count()) return words.unknown;
  if (reported == kUnlimitedTimeout.count()) return words.unlimited;
  const FormattedValue formatted = FormatDuration(administratorLimit, units);
  return formatted.magnitude != 0 ? formatted.text : words.none;
}
