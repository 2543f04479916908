#include "NetUtilities/Registry/RefreshedDword.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <thread>

#include "tests/support/WaitUntil.h"

namespace {

using namespace std::chrono_literals;

std::chrono::steady_clock::time_point now;
uint32_t stored;
int readings;

// What readings ask for, and see.
std::unique_ptr<RefreshedDword> asked;
std::unique_ptr<RefreshedDword> other;
uint32_t seen;

std::chrono::steady_clock::time_point Now() { return now; }

class RefreshedDwordTest : public testing::Test {
 protected:
  RefreshedDwordTest() {
    // Long after the start of the clock, and not at a whole second of it.
    now = std::chrono::steady_clock::time_point(1h + 700ms);
    stored = 5;
    readings = 0;
    seen = 99;
  }

  // What is seen at some time after the first reading, when the stored number has changed in between.
  uint32_t SeenAfter(std::chrono::steady_clock::duration time) {
    value.Get();
    stored = 6;
    now += time;
    return value.Get();
  }

  RefreshedDword value{[] { return ++readings, stored; }, Now};
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

TEST_F(RefreshedDwordTest, IsReadByEveryThreadThatAsksDuringTheFirstReading) {
  static std::atomic<int> reading;
  reading = 0;
  // The first reading takes until the second has come.
  RefreshedDword slow([] { return ++reading, WaitUntil([] { return reading == 2; }), stored; }, Now);
  std::jthread first([&slow] { EXPECT_EQ(slow.Get(), 5u); });
  ASSERT_TRUE(WaitUntil([] { return reading == 1; }));
  EXPECT_EQ(slow.Get(), 5u);
  first.join();
  EXPECT_EQ(slow.Get(), 5u);
  EXPECT_EQ(reading, 2);
}

TEST_F(RefreshedDwordTest, IsWhatItWasForWhoAsksWhileReadingIt) {
  asked = std::make_unique<RefreshedDword>([] { return ++readings, seen = asked->Get(), stored; }, Now);
  EXPECT_EQ(asked->Get(), 5u);
  EXPECT_EQ(seen, 0u);
  stored = 6;
  now += 11s;
  EXPECT_EQ(asked->Get(), 6u);
  EXPECT_EQ(seen, 5u);
  EXPECT_EQ(readings, 2);
}

TEST_F(RefreshedDwordTest, IsWhatItWasForWhoAsksWhileReadingAnotherForIt) {
  asked = std::make_unique<RefreshedDword>([] { return ++readings, other->Get() + 1; }, Now);
  other = std::make_unique<RefreshedDword>([] { return seen = asked->Get(), stored; }, Now);
  EXPECT_EQ(asked->Get(), 6u);
  EXPECT_EQ(seen, 0u);
  EXPECT_EQ(readings, 1);
}

TEST_F(RefreshedDwordTest, IsReadAgainAfterAReadingThatThrew) {
  RefreshedDword throwing([] { return ++readings == 1 ? throw std::runtime_error("no memory") : stored; }, Now);
  EXPECT_THROW(throwing.Get(), std::runtime_error);
  EXPECT_EQ(throwing.Get(), 5u);
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
