#include "LoginProperties/Timeouts/TimeoutPresets.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "tests/LoginProperties/Timeouts/TimeoutTexts.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::ThrowsMessage;

namespace {

constexpr int64_t kNoLimit = 2147483647;

std::vector<std::wstring> Texts(const std::vector<Preset>& presets) {
  std::vector<std::wstring> texts;
  for (const Preset& preset : presets) texts.push_back(preset.text);
  return texts;
}

std::vector<uint32_t> Values(const std::vector<Preset>& presets) {
  std::vector<uint32_t> values;
  for (const Preset& preset : presets) values.push_back(preset.value);
  return values;
}

Profile WithLimits(int idle, int session, int thresholdMinutes, int thresholdBytes) {
  Profile profile(2001);
  profile.Columns().smIdleTime = idle;
  profile.Columns().smSessionTime = session;
  profile.Columns().smThresholdTime = thresholdMinutes;
  profile.Columns().smThresholdBytes = thresholdBytes;
  return profile;
}

}  // namespace

TEST(TimeoutPresets, KeepTheListsOrderAndValues) {
  const auto presets = DurationPresets(kDurationList, kNoLimit, kDurationUnits);
  EXPECT_THAT(Values(presets), ElementsAre(120, 300, 600, 1200, 1800, 3600, 7200, 14400, 28800));
  EXPECT_EQ(presets.front().text, L" 2 minutes");
  EXPECT_EQ(presets.back().text, L" 8 hours");
  EXPECT_THAT(Values(DurationPresets(L"300,60,120", kNoLimit, kDurationUnits)), ElementsAre(300, 60, 120));
}

TEST(TimeoutPresets, SessionLimitOf1800LeavesTwoToThirtyMinutes) {
  const auto limits = LimitsOf(WithLimits(0, 1800, 0, 0));
  EXPECT_THAT(Texts(DurationPresets(kDurationList, limits.longestDuration, kDurationUnits)),
              ElementsAre(L" 2 minutes", L" 5 minutes", L"10 minutes", L"20 minutes", L"30 minutes"));
}

TEST(TimeoutPresets, IdleLimitOf120LeavesTwoWarnings) {
  const auto limits = LimitsOf(WithLimits(120, 0, 0, 0));
  EXPECT_EQ(limits.longestWarning, 90);
  EXPECT_THAT(Texts(DurationPresets(kWarningList, limits.longestWarning, kDurationUnits)),
              ElementsAre(L"30 seconds", L" 1 minute"));
}

TEST(TimeoutPresets, ThresholdLimitCountsMinutes) {
  const auto limits = LimitsOf(WithLimits(0, 0, 10, 0));
  EXPECT_THAT(Texts(DurationPresets(kPeriodList, limits.longestPeriod, kDurationUnits)),
              ElementsAre(L" 1 minute", L" 2 minutes", L" 5 minutes", L"10 minutes"));
}

TEST(TimeoutPresets, ByteLimitOf1000RemovesFiftyToFiveHundredBytes) {
  const auto limits = LimitsOf(WithLimits(0, 0, 0, 1000));
  const auto presets = BytePresets(kByteList, limits.fewestBytes, kByteUnits);
  EXPECT_EQ(presets.size(), 12u);
  EXPECT_EQ(presets.front().text, L"  1 KByte");
  EXPECT_EQ(presets.front().value, 1000u);
}

TEST(TimeoutPresets, WithoutLimitsNothingIsCut) {
  const auto limits = LimitsOf(WithLimits(0, 0, 0, 0));
  EXPECT_EQ(limits.longestDuration, kNoLimit);
  EXPECT_EQ(limits.longestWarning, kNoLimit - 30);
  EXPECT_EQ(limits.longestPeriod, kNoLimit);
  EXPECT_EQ(limits.fewestBytes, 0);
  EXPECT_EQ(BytePresets(kByteList, limits.fewestBytes, kByteUnits).size(), 16u);
}

TEST(TimeoutPresets, AnIdleLimitBelowTheMarginLeavesNoWarning) {
  EXPECT_THAT(DurationPresets(kWarningList, LimitsOf(WithLimits(20, 0, 0, 0)).longestWarning, kDurationUnits),
              IsEmpty());
}

TEST(TimeoutPresets, SplitAtBlanksCommasSemicolonsAndTabs) {
  EXPECT_THAT(Values(BytePresets(L"50, 100;200\t300,,400 ", 0, kByteUnits)), ElementsAre(50, 100, 200, 300, 400));
}

TEST(TimeoutPresets, LeaveZeroOut) {
  EXPECT_THAT(Values(DurationPresets(L"0,60", kNoLimit, kDurationUnits)), ElementsAre(60));
  EXPECT_THAT(Values(BytePresets(L"0,-5,60", -10, kByteUnits)), ElementsAre(60));
}

TEST(TimeoutPresets, ANegativeDurationCountsByItsMagnitude) {
  EXPECT_THAT(Values(DurationPresets(L"-60,120", kNoLimit, kDurationUnits)), ElementsAre(60, 120));
}

TEST(TimeoutPresets, AListThatDoesNotParseRaises) {
  EXPECT_THAT([] { DurationPresets(L"60,abc", kNoLimit, kDurationUnits); },
              ThrowsMessage<std::invalid_argument>("invalid stoi argument"));
  EXPECT_THAT([] { DurationPresets(L"2147483648", kNoLimit, kDurationUnits); },
              ThrowsMessage<std::out_of_range>("stoi argument out of range"));
  EXPECT_THROW(BytePresets(L"x", 0, kByteUnits), std::invalid_argument);
  EXPECT_THROW(BytePresets(L"-2147483649", 0, kByteUnits), std::out_of_range);
}

TEST(IndexForValue, TakesTheFirstItemThatIsNotLess) {
  const std::vector<uint32_t> warnings = {30, 60, 120, 180, 240, 300};
  EXPECT_EQ(IndexForValue(warnings, 45), 1);
  EXPECT_EQ(IndexForValue(warnings, 30), 0);
  EXPECT_EQ(IndexForValue(warnings, -60), 1);
  EXPECT_EQ(IndexForValue(warnings, 1), 0);
}

TEST(IndexForValue, TakesTheLastItemForLargerValues) {
  EXPECT_EQ(IndexForValue({120, 300, 600, 1200, 1800}, 3600), 4);
  EXPECT_EQ(IndexForValue({}, 3600), -1);
}

TEST(IndexForValue, TakesTheSecondItemForZeroWhateverTheListHolds) {
  EXPECT_EQ(IndexForValue({30, 60}, 0), 1);
  EXPECT_EQ(IndexForValue({}, 0), 1);
}
