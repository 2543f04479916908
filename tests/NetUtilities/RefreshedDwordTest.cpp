#include "NetUtilities/RefreshedDword.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

std::chrono::steady_clock::time_point now;
uint32_t stored;
int readings;

class RefreshedDwordTest : public testing::Test {
 protected:
  RefreshedDwordTest() {
    // Long after the start of the clock, and not at a whole second of it.
    now = std::chrono::steady_clock::time_point(1h + 700ms);
    stored = 5;
    readings = 0;
  }

  // What is seen at some time after the first reading, when the stored number has changed in between.
  uint32_t SeenAfter(std::chrono::steady_clock::duration time) {
    value.Get();
    stored = 6;
    now += time;
    return value.Get();
  }

  RefreshedDword value{[] { return ++readings, stored; }, [] { return now; }};
};

TEST_F(RefreshedDwordTest, IsReadByTheFirstCallOnly) {
  EXPECT_EQ(readings, 0);
  EXPECT_EQ(value.Get(), 5u);
  EXPECT_EQ(value.Get(), 5u);
  EXPECT_EQ(readings, 1);
}

TEST_F(RefreshedDwordTest, IsReadByTheFirstCallEvenWhenTheClockHasJustStarted) {
  now = {};
  EXPECT_EQ(value.Get(), 5u);
}

TEST_F(RefreshedDwordTest, IsKeptFor9Seconds) { EXPECT_EQ(SeenAfter(9s), 5u); }

TEST_F(RefreshedDwordTest, IsKeptFor10Seconds) { EXPECT_EQ(SeenAfter(10s), 5u); }

TEST_F(RefreshedDwordTest, IsKeptUntilJustBefore11Seconds) { EXPECT_EQ(SeenAfter(10'999ms), 5u); }

TEST_F(RefreshedDwordTest, IsReadAgainAfter11Seconds) {
  EXPECT_EQ(SeenAfter(11s), 6u);
  EXPECT_EQ(readings, 2);
}

TEST_F(RefreshedDwordTest, CountsItsAgeFromTheLatestReading) {
  SeenAfter(11s);
  stored = 7;
  now += 10s;
  EXPECT_EQ(value.Get(), 6u);
  now += 1s;
  EXPECT_EQ(value.Get(), 7u);
}

}  // namespace
