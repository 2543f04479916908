#include "LoginProperties/Timeouts/TimeoutRules.h"

#include <gtest/gtest.h>

#include <ostream>

#include "tests/LoginProperties/Timeouts/TimeoutTexts.h"
#include "WaylineDll/TimeoutValues.h"

namespace {

using Kind = TimeoutProblem::Kind;
using Seconds = Profile::Seconds;

Profile WithTimes(int duration, int period, int warning) {
  Profile profile(2001);
  profile.Columns().defaultTimeouts = false;
  profile.Columns().durationTime = duration;
  profile.Columns().thresholdTimeOut = period;
  profile.Columns().warnTime = warning;
  return profile;
}

ChosenTimeouts DurationAndWarning(uint32_t duration, uint32_t warning) {
  ChosenTimeouts chosen;
  chosen.durationOn = true;
  chosen.duration = duration;
  chosen.warningOn = true;
  chosen.warning = warning;
  return chosen;
}

void ExpectProblem(const std::optional<TimeoutProblem>& problem, Kind kind, TimeoutList list) {
  ASSERT_TRUE(problem.has_value());
  EXPECT_EQ(problem->kind, kind);
  EXPECT_EQ(problem->list, list);
}

}  // namespace

TEST(PrepareTimeouts, GivesTimesThatWereNeverSetTheirDefaults) {
  Profile profile = WithTimes(0, 0, 0);
  const ShownTimeouts shown = PrepareTimeouts(profile);
  EXPECT_FALSE(shown.durationOn);
  EXPECT_FALSE(shown.thresholdOn);
  EXPECT_FALSE(shown.warningOn);
  EXPECT_EQ(shown.duration, -28800);
  EXPECT_EQ(shown.thresholdPeriod, -28800);
  EXPECT_EQ(shown.warning, 60);
  EXPECT_EQ(profile.GetDurationTime(), Seconds(-28800));
  EXPECT_EQ(profile.GetThresholdTimeOut(), Seconds(-28800));
  EXPECT_EQ(profile.GetWarnTime(), Seconds(60));
}

TEST(PrepareTimeouts, LeavesTheProfileUnmarked) {
  Profile profile = WithTimes(0, 0, 0);
  PrepareTimeouts(profile);
  EXPECT_EQ(profile.GetState(), ChangeState::Unchanged);
}

TEST(PrepareTimeouts, ShowsRulesWithPositiveTimesAsOn) {
  Profile profile = WithTimes(7200, 300, 120);
  profile.SetThresholdOnOff(true);
  profile.SetThresholdBytes(1000);
  const ShownTimeouts shown = PrepareTimeouts(profile);
  EXPECT_TRUE(shown.overrides);
  EXPECT_TRUE(shown.durationOn);
  EXPECT_TRUE(shown.thresholdOn);
  EXPECT_TRUE(shown.warningOn);
  EXPECT_EQ(shown.duration, 7200);
  EXPECT_EQ(shown.thresholdPeriod, 300);
  EXPECT_EQ(shown.thresholdBytes, 1000);
  EXPECT_EQ(shown.warning, 120);
}

TEST(PrepareTimeouts, ShowsRulesWithNegativeTimesAsOffAndKeepsThem) {
  Profile profile = WithTimes(-7200, -300, -120);
  const ShownTimeouts shown = PrepareTimeouts(profile);
  EXPECT_FALSE(shown.durationOn);
  EXPECT_FALSE(shown.warningOn);
  EXPECT_EQ(shown.duration, -7200);
  EXPECT_EQ(profile.GetDurationTime(), Seconds(-7200));
}

TEST(PrepareTimeouts, TheThresholdNeedsBothItsSwitchAndAPeriod) {
  for (const auto& [onOff, period] : {std::pair{true, -300}, std::pair{true, 0}, std::pair{false, 300}}) {
    Profile profile = WithTimes(0, period, 0);
    profile.SetThresholdOnOff(onOff);
    EXPECT_FALSE(PrepareTimeouts(profile).thresholdOn);
    EXPECT_FALSE(profile.GetThresholdOnOff());
  }
}

TEST(PrepareTimeouts, SaysWhetherTheShownProfileOverrides) {
  Profile profile(2001);
  EXPECT_FALSE(PrepareTimeouts(profile).overrides);
}

TEST(StoreTimeouts, WritesWhatWasChosen) {
  Profile profile = WithTimes(-28800, -28800, 60);
  ChosenTimeouts chosen = DurationAndWarning(7200, 120);
  chosen.thresholdOn = true;
  chosen.thresholdBytes = 1000;
  chosen.thresholdPeriod = 300;
  EXPECT_FALSE(StoreTimeouts(chosen, profile));
  EXPECT_EQ(profile.GetDurationTime(), Seconds(7200));
  EXPECT_EQ(profile.GetThresholdBytes(), 1000);
  EXPECT_EQ(profile.GetThresholdTimeOut(), Seconds(300));
  EXPECT_EQ(profile.GetWarnTime(), Seconds(120));
}

TEST(StoreTimeouts, ClearsDurationAndThresholdThatAreOff) {
  Profile profile = WithTimes(7200, 300, -60);
  profile.SetThresholdBytes(1000);
  EXPECT_FALSE(StoreTimeouts({}, profile));
  EXPECT_EQ(profile.GetDurationTime(), Seconds(0));
  EXPECT_EQ(profile.GetThresholdTimeOut(), Seconds(0));
  EXPECT_EQ(profile.GetThresholdBytes(), 0);
}

TEST(StoreTimeouts, TurnsTheSignOfAWarningThatIsOffAtEachValidation) {
  Profile profile = WithTimes(0, 0, -60);
  EXPECT_FALSE(StoreTimeouts({}, profile));
  EXPECT_EQ(profile.GetWarnTime(), Seconds(60));
  EXPECT_FALSE(StoreTimeouts({}, profile));
  EXPECT_EQ(profile.GetWarnTime(), Seconds(-60));
}

TEST(StoreTimeouts, AMissingDurationIsReportedAndBecomesEightHours) {
  Profile profile = WithTimes(0, 0, 60);
  ChosenTimeouts chosen;
  chosen.durationOn = true;
  ExpectProblem(StoreTimeouts(chosen, profile), Kind::ValueMissing, TimeoutList::Duration);
  EXPECT_EQ(profile.GetDurationTime(), Seconds(28800));
  EXPECT_EQ(profile.GetWarnTime(), Seconds(-60)) << "the warning is written although a value is missing";
}

TEST(StoreTimeouts, AMissingDurationLeavesAStoredOne) {
  Profile profile = WithTimes(600, 0, -60);
  ChosenTimeouts chosen;
  chosen.durationOn = true;
  ExpectProblem(StoreTimeouts(chosen, profile), Kind::ValueMissing, TimeoutList::Duration);
  EXPECT_EQ(profile.GetDurationTime(), Seconds(600));
}

TEST(StoreTimeouts, AMissingThresholdValueIsReported) {
  Profile profile = WithTimes(0, 300, -60);
  ChosenTimeouts chosen;
  chosen.thresholdOn = true;
  chosen.thresholdPeriod = 60;
  ExpectProblem(StoreTimeouts(chosen, profile), Kind::ValueMissing, TimeoutList::ThresholdBytes);
  chosen.thresholdBytes = 50;
  chosen.thresholdPeriod.reset();
  ExpectProblem(StoreTimeouts(chosen, profile), Kind::ValueMissing, TimeoutList::ThresholdPeriod);
  EXPECT_EQ(profile.GetThresholdTimeOut(), Seconds(300));
}

TEST(StoreTimeouts, OfSeveralMissingValuesTheLastIsReported) {
  Profile profile = WithTimes(0, 0, 60);
  ChosenTimeouts chosen;
  chosen.durationOn = true;
  chosen.thresholdOn = true;
  ExpectProblem(StoreTimeouts(chosen, profile), Kind::ValueMissing, TimeoutList::ThresholdBytes);
  chosen.warningOn = true;
  ExpectProblem(StoreTimeouts(chosen, profile), Kind::ValueMissing, TimeoutList::Warning);
}

TEST(StoreTimeouts, AWarningMustBeShorterThanTheDuration) {
  Profile profile = WithTimes(0, 0, 60);
  ExpectProblem(StoreTimeouts(DurationAndWarning(120, 180), profile), Kind::WarningTooLong, TimeoutList::Warning);
  ExpectProblem(StoreTimeouts(DurationAndWarning(120, 120), profile), Kind::WarningTooLong, TimeoutList::Warning);
  EXPECT_FALSE(StoreTimeouts(DurationAndWarning(120, 60), profile));
  EXPECT_EQ(profile.GetDurationTime(), Seconds(120)) << "what was written stays";
}

TEST(StoreTimeouts, AWarningMustBeShorterThanTheThresholdPeriod) {
  Profile profile = WithTimes(0, 0, 60);
  ChosenTimeouts chosen;
  chosen.thresholdOn = true;
  chosen.thresholdBytes = 50;
  chosen.thresholdPeriod = 60;
  chosen.warningOn = true;
  chosen.warning = 60;
  ExpectProblem(StoreTimeouts(chosen, profile), Kind::WarningTooLong, TimeoutList::Warning);
  chosen.warning = 30;
  EXPECT_FALSE(StoreTimeouts(chosen, profile));
}

TEST(StoreTimeouts, AWarningMustBeShorterThanTheInactivityLimit) {
  Profile profile = WithTimes(0, 0, 60);
  profile.Columns().smIdleTime = 60;
  ExpectProblem(StoreTimeouts(DurationAndWarning(28800, 60), profile), Kind::WarningTooLong, TimeoutList::Warning);
  EXPECT_FALSE(StoreTimeouts(DurationAndWarning(28800, 30), profile));
  profile.Columns().smIdleTime = 0;
  EXPECT_FALSE(StoreTimeouts(DurationAndWarning(28800, 60), profile));
}

TEST(FindLinkedDefault, SearchesOnlyWhenTheCacheIsAnotherProfile) {
  const auto first = std::make_shared<Profile>(1);
  const auto second = std::make_shared<Profile>(2);
  std::shared_ptr<Profile> cached;
  EXPECT_EQ(FindLinkedDefault(cached, {{1, first}, {2, second}}, 1), first);
  EXPECT_EQ(FindLinkedDefault(cached, {}, 1), first) << "the cache answers";
  EXPECT_EQ(FindLinkedDefault(cached, {{1, first}, {2, second}}, 2), second);
  EXPECT_EQ(cached, second);
}

TEST(FindLinkedDefault, KeepsAndUsesTheCacheWhenTheSearchFails) {
  const auto first = std::make_shared<Profile>(1);
  std::shared_ptr<Profile> cached = first;
  EXPECT_EQ(FindLinkedDefault(cached, {{1, first}}, 99), first);
  EXPECT_EQ(cached, first);
  cached = nullptr;
  EXPECT_EQ(FindLinkedDefault(cached, {{1, first}}, 99), nullptr);
}

TEST(InactivityLimitText, NamesEachKindOfLimit) {
  const InactivityWords words = {L"unknown", L"unlimited", L"not limited"};
  EXPECT_EQ(InactivityLimitText(0, 600, words, kDurationUnits), std::nullopt);
  EXPECT_EQ(InactivityLimitText(kUnknownTimeout.count(), 600, words, kDurationUnits), L"unknown");
  EXPECT_EQ(InactivityLimitText(kUnlimitedTimeout.count(), 600, words, kDurationUnits), L"unlimited");
  EXPECT_EQ(InactivityLimitText(300, 600, words, kDurationUnits), L"10 minutes") << "the administrator's limit";
  EXPECT_EQ(InactivityLimitText(300, 0, words, kDurationUnits), L"not limited");
}
