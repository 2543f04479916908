#include "LoginProperties/Autostart/DelayOptions.h"

#include <gmock/gmock.h>

using testing::Optional;

namespace {

constexpr size_t kAll = 10;
constexpr size_t kWithoutBeforeConnecting = 8;

struct Row {
  size_t index;
  Delay delay;
};

// What the texts of the list say, in their order; "(none)" stands before them.
constexpr Row kRows[] = {{1, {10, 1}},  {2, {30, 1}},  {3, {60, 1}},  {4, {120, 1}}, {5, {300, 1}},
                         {6, {120, 2}}, {7, {300, 2}}, {8, {120, 3}}, {9, {300, 3}}};

}  // namespace

TEST(DelayOptions, EachChoiceStoresItsDelay) {
  for (const auto& [index, delay] : kRows) EXPECT_EQ(ChosenDelay(index, {7, 7}), delay) << index;
}

TEST(DelayOptions, NoneLeavesTheSecondsAsTheyWere) {
  EXPECT_EQ(ChosenDelay(0, {300, 3}), (Delay{300, 0}));
  EXPECT_EQ(ChosenDelay(0, {7, 7}), (Delay{7, 0}));
}

TEST(DelayOptions, EachStoredDelayIsShownAsWhatStoredIt) {
  for (const auto& [index, delay] : kRows) EXPECT_THAT(IndexOfDelay(delay, kAll), Optional(index)) << index;
}

TEST(DelayOptions, ShortDelaysAreShownWhateverIsWaitedFor) {
  for (const int32_t waitMode : {-1, 0, 2, 3, 4}) {
    EXPECT_THAT(IndexOfDelay({10, waitMode}, kAll), Optional(size_t{1})) << waitMode;
    EXPECT_THAT(IndexOfDelay({30, waitMode}, kAll), Optional(size_t{2})) << waitMode;
    EXPECT_THAT(IndexOfDelay({60, waitMode}, kAll), Optional(size_t{3})) << waitMode;
  }
}

TEST(DelayOptions, LongDelaysForSomethingElseLeaveTheSelectionAsItIs) {
  for (const int32_t seconds : {120, 300}) {
    for (const int32_t waitMode : {-1, 0, 4}) {
      EXPECT_EQ(IndexOfDelay({seconds, waitMode}, kAll), std::nullopt) << seconds << ' ' << waitMode;
    }
  }
}

TEST(DelayOptions, AnyOtherDelayIsShownAsNone) {
  for (const int32_t seconds : {-1, 0, 1, 9, 11, 119, 121, 301, 3000}) {
    for (const int32_t waitMode : {0, 1, 2, 3}) {
      EXPECT_THAT(IndexOfDelay({seconds, waitMode}, kAll), Optional(size_t{0})) << seconds << ' ' << waitMode;
    }
  }
}

TEST(DelayOptions, ADelayBeforeConnectingIsShownAsNoneWhereItIsNotOffered) {
  EXPECT_THAT(IndexOfDelay({120, 3}, kWithoutBeforeConnecting), Optional(size_t{0}));
  EXPECT_THAT(IndexOfDelay({300, 3}, kWithoutBeforeConnecting), Optional(size_t{0}));
  EXPECT_THAT(IndexOfDelay({300, 2}, kWithoutBeforeConnecting), Optional(size_t{7}));
}

TEST(DelayOptions, DelaysBeforeConnectingAreOfferedInTheFirstPhaseAndInNone) {
  EXPECT_EQ(OfferedDelays(-1), kAll);
  EXPECT_EQ(OfferedDelays(0), kAll);
  EXPECT_EQ(OfferedDelays(1), kWithoutBeforeConnecting);
  EXPECT_EQ(OfferedDelays(3), kWithoutBeforeConnecting);
}
