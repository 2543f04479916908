#include "TraceLogManager/LogFollower.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <filesystem>

#include "tests/support/TemporaryFolder.h"
#include "TraceLogManager/DailyLogFile.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class LogFollowerTest : public testing::Test {
 protected:
  void Write(uint32_t source, const std::wstring& text) {
    EXPECT_EQ(log_.Append(LogFileRecord(source, 3, text)), S_OK);
  }

  LogFollower Follower(LogViewFilter filter = {}) {
    return LogFollower(
        folder_.Path().wstring(), [this] { return today_; }, std::move(filter));
  }

  const TemporaryFolder folder_;
  LogDate today_{2026, 11, 15};
  DailyLogFile log_{[this] { return folder_.Path().wstring(); }, [this] { return today_; }};
};

}  // namespace

TEST_F(LogFollowerTest, WaitsForTheFile) {
  LogFollower follower = Follower();
  EXPECT_THAT(follower.Next(), IsEmpty());
  Write(1, L"first");
  EXPECT_THAT(follower.Next(), ElementsAre("General       Info   first"));
  EXPECT_THAT(follower.Next(), IsEmpty());
}

TEST_F(LogFollowerTest, BeginsWithTheLastTenLines) {
  for (int number = 1; number <= 12; ++number) Write(28, std::to_wstring(number));
  LogFollower follower = Follower();
  const std::vector<std::string> lines = follower.Next();
  ASSERT_EQ(lines.size(), 10u);
  EXPECT_EQ(lines.front(), "Database      Info   3");
  EXPECT_EQ(lines.back(), "Database      Info   12");
}

TEST_F(LogFollowerTest, BeginsWithTheLastLinesThatPassTheFilter) {
  Write(28, L"database");
  for (int number = 1; number <= 12; ++number) Write(1, std::to_wstring(number));
  EXPECT_THAT(Follower({.sources = {28}}).Next(), ElementsAre("Database      Info   database"));
}

TEST_F(LogFollowerTest, GivesMoreThanTenLinesLater) {
  LogFollower follower = Follower();
  EXPECT_THAT(follower.Next(), IsEmpty());
  for (int number = 1; number <= 12; ++number) Write(28, std::to_wstring(number));
  EXPECT_EQ(follower.Next().size(), 12u);
}

TEST_F(LogFollowerTest, ReadsLinesOfAnyLength) {
  const std::string text(300'000, 'x');
  Write(1, std::wstring(text.begin(), text.end()));
  EXPECT_THAT(Follower().Next(), ElementsAre("General       Info   " + text));
}

TEST_F(LogFollowerTest, GoesOverMidnightIntoTheNextFile) {
  LogFollower follower = Follower();
  Write(1, L"evening");
  EXPECT_THAT(follower.Next(), ElementsAre("General       Info   evening"));
  Write(1, L"last of the day");
  today_ = {2026, 11, 16};
  Write(1, L"first of the day");
  EXPECT_THAT(follower.Next(),
              ElementsAre("General       Info   last of the day", "General       Info   first of the day"));
}

TEST_F(LogFollowerTest, BeginsAgainWhenTheFileIsMadeAnew) {
  LogFollower follower = Follower();
  Write(1, L"a long line in the old file");
  EXPECT_EQ(follower.Next().size(), 1u);
  std::filesystem::rename(log_.Path(), folder_.Path() / L"old.log");
  EXPECT_THAT(follower.Next(), IsEmpty());
  Write(1, L"new");
  EXPECT_THAT(follower.Next(), ElementsAre("General       Info   new"));
}

TEST_F(LogFollowerTest, KeepsNobodyFromRenamingTheFile) {
  LogFollower follower = Follower();
  Write(1, L"one");
  EXPECT_EQ(follower.Next().size(), 1u);
  EXPECT_NE(MoveFileW(log_.Path().c_str(), folder_.File(L"old.log").c_str()), FALSE);
}
