#include "TraceLogManager/LogView.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr char kRecords[] =
    " 1 3 general\r\n"
    "28 2 database\r\n"
    "     continued\r\n"
    " 7 5 other\r\n";

}  // namespace

TEST(LogViewFilter, PassesEverythingByDefault) {
  EXPECT_TRUE(LogViewFilter().Passes(0, 0));
  EXPECT_TRUE(LogViewFilter().Passes(36, 65535));
}

TEST(LogViewFilter, PassesTheNamedSources) {
  const LogViewFilter filter{.sources = {28, 1}};
  EXPECT_TRUE(filter.Passes(1, 5));
  EXPECT_TRUE(filter.Passes(28, 5));
  EXPECT_FALSE(filter.Passes(8, 1));
}

TEST(LogViewFilter, PassesLevelsUpToItsOwn) {
  const LogViewFilter filter{.sources = {}, .maximumLevel = 3};
  EXPECT_TRUE(filter.Passes(1, 0));
  EXPECT_TRUE(filter.Passes(1, 3));
  EXPECT_FALSE(filter.Passes(1, 4));
}

TEST(LogViewFilter, AsksForBothSourceAndLevel) {
  const LogViewFilter filter{.sources = {28}, .maximumLevel = 2};
  EXPECT_TRUE(filter.Passes(28, 2));
  EXPECT_FALSE(filter.Passes(28, 3));
  EXPECT_FALSE(filter.Passes(1, 2));
}

TEST(LogView, NamesSourcesAndLevels) {
  EXPECT_THAT(LogView({}).Add(kRecords), ElementsAre("General       Info   general",    //
                                                     "Database      Error  database",   //
                                                     "                     continued",  //
                                                     "Source 7      Trace  other"));
}

TEST(LogView, LeavesOutRecordsWithTheirFurtherLines) {
  LogView view({.sources = {1, 7}});
  EXPECT_THAT(view.Add(kRecords), ElementsAre("General       Info   general", "Source 7      Trace  other"));
}

TEST(LogView, WaitsForTheEndOfALine) {
  LogView view({});
  EXPECT_THAT(view.Add(" 1 3 a"), IsEmpty());
  EXPECT_THAT(view.Add("b\r"), IsEmpty());
  EXPECT_THAT(view.Add("\n 1 3 c\r\n 1"), ElementsAre("General       Info   ab", "General       Info   c"));
  EXPECT_THAT(view.Add(" 3 d\r\n"), ElementsAre("General       Info   d"));
}

TEST(LogView, ForgetsAnUnfinishedLineWithItsFile) {
  LogView view({.sources = {28}});
  EXPECT_THAT(view.Add(" 1 3 hidden\r\n 1 3 unfinished"), IsEmpty());
  view.BeginFile();
  EXPECT_THAT(view.Add("28 3 first\r\n"), ElementsAre("Database      Info   first"));
}
