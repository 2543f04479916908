#include "NetUtilities/Logger/LogFilter.h"

#include <gtest/gtest.h>

namespace {

constexpr LogSource kSource{7};

class LogFilterTest : public testing::Test {
 protected:
  bool Passes(LogLevel level) const { return filter.Passes(kSource, level); }

  LogFilter filter;
};

TEST_F(LogFilterTest, IsSetByItsGlobalThreshold) {
  EXPECT_FALSE(filter.IsSet());
  filter.SetSource(7, 5);
  EXPECT_FALSE(filter.IsSet());
  filter.SetGlobal(0);
  EXPECT_TRUE(filter.IsSet());
}

TEST_F(LogFilterTest, PassesLevelsUpToTheGlobalThreshold) {
  filter.SetGlobal(4);
  EXPECT_TRUE(Passes(LogLevel::Detail));
  EXPECT_FALSE(Passes(LogLevel::Trace));
  filter.SetGlobal(5);
  EXPECT_TRUE(Passes(LogLevel::Trace));
}

TEST_F(LogFilterTest, LetsASourceThresholdOverrideBothWays) {
  filter.SetGlobal(2);
  filter.SetSource(7, 5);
  EXPECT_TRUE(Passes(LogLevel::Trace));
  EXPECT_FALSE(filter.Passes(LogSource{8}, LogLevel::Info)) << "Other sources keep the global one.";
  filter.SetGlobal(4);
  filter.SetSource(7, 1);
  EXPECT_FALSE(Passes(LogLevel::Error));
  filter.SetSource(7, 0);
  EXPECT_TRUE(Passes(LogLevel::Detail)) << "0 is no threshold of its own.";
}

TEST_F(LogFilterTest, AlwaysPassesLevel0) { EXPECT_TRUE(Passes(LogLevel{0})); }

TEST_F(LogFilterTest, UsesTheGlobalThresholdForSourcesThatDoNotExist) {
  filter.SetGlobal(2);
  for (const LogSource source : {LogSource{37}, LogSource{0xffff}}) {
    EXPECT_TRUE(filter.Passes(source, LogLevel::Error));
    EXPECT_FALSE(filter.Passes(source, LogLevel::Info));
  }
}

}  // namespace
