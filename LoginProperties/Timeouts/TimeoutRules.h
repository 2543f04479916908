#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "Database/Profiles/Profile.h"
#include "LoginProperties/Timeouts/TimeoutText.h"

/// What the page shows of a profile: which rules are on, and the stored values to select. A negative value is that of a
/// rule that is off.
struct ShownTimeouts {
  bool overrides;
  bool warningOn;
  bool durationOn;
  bool thresholdOn;
  int64_t warning;
  int64_t duration;
  int64_t thresholdPeriod;
  int64_t thresholdBytes;
};

/// What to show of `profile`. Time-outs that were never set get their defaults here, in the profile itself.
ShownTimeouts PrepareTimeouts(Profile& profile);

/// What the user has chosen on the page; an empty value where a list has no selection.
struct ChosenTimeouts {
  bool durationOn = false;
  std::optional<uint32_t> duration;
  bool thresholdOn = false;
  std::optional<uint32_t> thresholdBytes;
  std::optional<uint32_t> thresholdPeriod;
  bool warningOn = false;
  std::optional<uint32_t> warning;
};

/// The lists of the page.
enum class TimeoutList {
  Duration,
  ThresholdBytes,
  ThresholdPeriod,
  Warning,
};

/// Why the choices cannot stand, and the list that the user must turn to.
struct TimeoutProblem {
  enum class Kind {
    ValueMissing,    // a rule is on without a value
    WarningTooLong,  // the warning does not end before what it warns of
  } kind;
  TimeoutList list;
};

/// Writes the choices into `profile`, then checks it. What was written stays, also when there is a problem.
std::optional<TimeoutProblem> StoreTimeouts(const ChosenTimeouts& chosen, Profile& profile);

/// The profile whose values a profile that follows the defaults shows: the one with id `linkProfile`. `cached` is
/// looked at first and replaced by what is found; when nothing is found it stays and is the answer.
std::shared_ptr<Profile> FindLinkedDefault(std::shared_ptr<Profile>& cached, const ProfileTable& profiles,
                                           uint32_t linkProfile);

/// Words for an inactivity limit that is not a number.
struct InactivityWords {
  std::wstring unknown;
  std::wstring unlimited;
  std::wstring none;  // no limit is set
};

/// The inactivity limit of the active connection in words, given what the connection reports and the limit that the
/// administrator set in the profile (both in seconds); nothing while the connection has not told it.
std::optional<std::wstring> InactivityLimitText(int64_t reported, int64_t administratorLimit,
                                                const InactivityWords& words, const DurationUnits& units);
