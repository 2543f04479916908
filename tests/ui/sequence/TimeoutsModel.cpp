#include "tests/ui/sequence/TimeoutsModel.h"

#include <cstdlib>

namespace {

constexpr wchar_t kValueMissing[] = L"A time value must be specified for a selected option.";
constexpr wchar_t kWarningTooLong[] = L"Warning time must be less than idle time, threshold time and duration time.";

constexpr int32_t kMinute = 60;
constexpr int32_t kHour = 3600;

std::vector<int32_t> UpTo(std::optional<int32_t> limit, const std::vector<int32_t>& values) {
  std::vector<int32_t> offered;
  for (const int32_t value : values) {
    if (!limit || value <= *limit) offered.push_back(value);
  }
  return offered;
}

std::optional<int32_t> Limit(int32_t stored, int32_t margin = 0) {
  return stored != 0 ? std::optional(stored - margin) : std::nullopt;
}

}  // namespace

void OfferedValues::Choose(int32_t stored) {
  chosen.reset();
  if (stored == 0) {
    if (values.size() >= 2) chosen = values[1];
    return;
  }
  for (const int32_t value : values) {
    chosen = value;
    if (value >= std::abs(stored)) return;
  }
}

void TimeoutsModel::Show(ProfileColumns& edited, ProfileColumns defaults) {
  duration.values = UpTo(Limit(edited.smSessionTime), {2 * kMinute, 5 * kMinute, 10 * kMinute, 20 * kMinute,
                                                       30 * kMinute, kHour, 2 * kHour, 4 * kHour, 8 * kHour});
  warning.values =
      UpTo(Limit(edited.smIdleTime, 30), {30, kMinute, 2 * kMinute, 3 * kMinute, 4 * kMinute, 5 * kMinute});
  period.values = UpTo(Limit(edited.smThresholdTime * kMinute),
                       {kMinute, 2 * kMinute, 5 * kMinute, 10 * kMinute, 15 * kMinute, 20 * kMinute, 30 * kMinute});
  bytes.values.clear();
  for (const int32_t value :
       {50, 100, 200, 500, 1000, 2000, 5000, 10000, 20000, 50000, 100000, 200000, 500000, 1000000, 2000000, 5000000}) {
    if (value >= edited.smThresholdBytes) bytes.values.push_back(value);
  }

  overrides = !edited.defaultTimeouts;
  ProfileColumns& shown = overrides ? edited : defaults;
  boxTicked = !shown.defaultTimeouts;
  durationOn = shown.durationTime > 0;
  thresholdOn = shown.thresholdTimeOut > 0 && shown.thresholdOnOff;
  warningOn = shown.warnTime > 0;

  // What was never set: the warning of a minute shows itself next time, the others are only remembered.
  if (shown.warnTime == 0) shown.warnTime = kMinute;
  if (shown.durationTime == 0) shown.durationTime = -8 * kHour;
  if (shown.thresholdTimeOut == 0) shown.thresholdTimeOut = -8 * kHour;
  shown.thresholdOnOff = thresholdOn;

  duration.Choose(shown.durationTime);
  period.Choose(shown.thresholdTimeOut);
  bytes.Choose(shown.thresholdBytes);
  warning.Choose(shown.warnTime);
}

std::optional<std::wstring> TimeoutsModel::Leave(ProfileColumns& edited) const {
  if (!boxTicked) return std::nullopt;
  bool missing = false;

  if (!durationOn) {
    edited.durationTime = 0;
  } else if (duration.chosen) {
    edited.durationTime = *duration.chosen;
  } else {
    missing = true;
    if (edited.durationTime == 0) edited.durationTime = 8 * kHour;
  }

  // A threshold that is off does not remember its values.
  if (!thresholdOn) {
    edited.thresholdTimeOut = 0;
    edited.thresholdBytes = 0;
  } else if (bytes.chosen && period.chosen) {
    edited.thresholdTimeOut = *period.chosen;
    edited.thresholdBytes = *bytes.chosen;
  } else {
    missing = true;
  }

  // A warning that is off comes back every other time.
  if (warningOn && !warning.chosen) return kValueMissing;
  edited.warnTime = warningOn ? *warning.chosen : -edited.warnTime;
  if (missing) return kValueMissing;

  for (const int32_t end : {edited.smIdleTime, edited.durationTime, edited.thresholdTimeOut}) {
    if (end > 0 && edited.warnTime >= end) return kWarningTooLong;
  }
  return std::nullopt;
}
