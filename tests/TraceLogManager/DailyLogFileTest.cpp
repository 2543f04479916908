#include "TraceLogManager/DailyLogFile.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <thread>
#include <vector>

#include "tests/support/FileBytes.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WaitUntil.h"

namespace {

class DailyLogFileTest : public testing::Test {
 protected:
  std::string TextOf(const std::wstring& name) const { return FileBytes(folder_.Path() / name); }

  const TemporaryFolder folder_;
  LogDate today_{2026, 11, 15};
  DailyLogFile log_{[this] { return folder_.Path().wstring(); }, [this] { return today_; }};
  const std::wstring file_ = L"TraceLog_2026-11-15.log";
};

}  // namespace

TEST_F(DailyLogFileTest, IsNamedByTheDay) {
  EXPECT_EQ(log_.Folder(), folder_.Path().wstring());
  EXPECT_EQ(log_.Path(), folder_.File(file_));
}

TEST_F(DailyLogFileTest, TakesRecordsOneAfterTheOther) {
  EXPECT_EQ(log_.Append("one\r\n"), S_OK);
  EXPECT_EQ(log_.Append("two\r\n"), S_OK);
  EXPECT_EQ(TextOf(file_), "one\r\ntwo\r\n");
}

TEST_F(DailyLogFileTest, ContinuesAFileThatIsThere) {
  std::ofstream(folder_.Path() / file_) << "before\n";
  EXPECT_EQ(log_.Append("one\r\n"), S_OK);
  EXPECT_THAT(TextOf(file_), testing::AllOf(testing::StartsWith("before"), testing::EndsWith("one\r\n")));
}

TEST_F(DailyLogFileTest, BeginsANewFileWithTheFirstRecordOfADay) {
  EXPECT_EQ(log_.Append("late\r\n"), S_OK);
  today_ = {2026, 11, 16};
  EXPECT_EQ(log_.Append("early\r\n"), S_OK);
  EXPECT_EQ(TextOf(file_), "late\r\n");
  EXPECT_EQ(TextOf(L"TraceLog_2026-11-16.log"), "early\r\n");
}

TEST_F(DailyLogFileTest, DoesNotTakeTheSameDayOfAnotherMonthForToday) {
  EXPECT_EQ(log_.Append("november\r\n"), S_OK);
  today_ = {2026, 12, 15};
  EXPECT_EQ(log_.Append("december\r\n"), S_OK);
  EXPECT_EQ(TextOf(L"TraceLog_2026-12-15.log"), "december\r\n");
}

TEST_F(DailyLogFileTest, IsMadeAnewWhenItWasDeleted) {
  EXPECT_EQ(log_.Append("one\r\n"), S_OK);
  EXPECT_TRUE(std::filesystem::remove(folder_.Path() / file_));
  if (std::filesystem::exists(folder_.Path() / file_)) {
    GTEST_SKIP() << "This system keeps a deleted file in its place while it is open.";
  }
  EXPECT_EQ(log_.Append("two\r\n"), S_OK);
  EXPECT_EQ(TextOf(file_), "two\r\n");
}

TEST_F(DailyLogFileTest, IsMadeAnewWhenItWasRenamed) {
  EXPECT_EQ(log_.Append("one\r\n"), S_OK);
  std::filesystem::rename(folder_.Path() / file_, folder_.Path() / L"old.log");
  EXPECT_EQ(log_.Append("two\r\n"), S_OK);
  EXPECT_EQ(TextOf(L"old.log"), "one\r\n");
  EXPECT_EQ(TextOf(file_), "two\r\n");
}

TEST_F(DailyLogFileTest, FollowsAnotherFileThatTookItsName) {
  EXPECT_EQ(log_.Append("one\r\n"), S_OK);
  std::filesystem::rename(folder_.Path() / file_, folder_.Path() / L"old.log");
  std::ofstream(folder_.Path() / file_, std::ios::binary) << "new\r\n";
  EXPECT_EQ(log_.Append("two\r\n"), S_OK);
  EXPECT_EQ(TextOf(L"old.log"), "one\r\n");
  EXPECT_EQ(TextOf(file_), "new\r\ntwo\r\n");
}

TEST_F(DailyLogFileTest, SaysWhyItCannotBeWritten) {
  std::filesystem::create_directory(folder_.Path() / file_);
  EXPECT_TRUE(FAILED(log_.Append("lost\r\n")));
  std::filesystem::remove(folder_.Path() / file_);
  EXPECT_EQ(log_.Append("one\r\n"), S_OK);
  EXPECT_EQ(TextOf(file_), "one\r\n");
}

TEST(DailyLogFile, NeedsAFolder) {
  DailyLogFile log([] { return std::wstring(); }, LocalDate);
  EXPECT_EQ(log.Path(), L"");
  EXPECT_EQ(log.Append("lost\r\n"), HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND));
}

// Two servers may run at once, each with threads for its clients.
TEST(DailyLogFile, RecordsOfSeveralProcessesNeitherMixNorGetLost) {
  constexpr int kThreads = 3;
  constexpr int kRecords = 300;
  const TemporaryFolder folder;
  const auto appendAll = [](const std::wstring& path, char process) {
    DailyLogFile log([path] { return path; }, [] { return LogDate{2026, 11, 15}; });
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
      threads.emplace_back([&log, process, thread] {
        for (int record = 0; record < kRecords; ++record) {
          std::ostringstream text;
          text << process << thread << ' ' << record << "\r\n";
          EXPECT_EQ(log.Append(text.str()), S_OK);
        }
      });
    }
  };
  // The other process finds the folder here.
  constexpr wchar_t kVariable[] = L"PAVISE_TEST_LOG_FOLDER";
  wchar_t inherited[MAX_PATH];
  const bool isOther = GetEnvironmentVariableW(kVariable, inherited, MAX_PATH) > 0;
  if (!isOther) SetEnvironmentVariableW(kVariable, folder.Path().c_str());
  {
    const std::jthread here([&] {
      if (isOther) return;
      EXPECT_TRUE(WaitUntil([&folder] { return !std::filesystem::is_empty(folder.Path()); }));
      appendAll(folder.Path().wstring(), 'a');
    });
    InOwnProcess([&] { appendAll(inherited, 'b'); });
  }
  if (isOther) return;
  SetEnvironmentVariableW(kVariable, nullptr);

  std::map<std::string, int> next;
  std::istringstream lines(FileBytes(folder.Path() / L"TraceLog_2026-11-15.log"));
  for (std::string writer; lines >> writer;) {
    int record = -1;
    lines >> record;
    EXPECT_EQ(record, next[writer]++) << writer;
  }
  EXPECT_EQ(next.size(), size_t{2} * kThreads);
  for (const auto& [writer, count] : next) EXPECT_EQ(count, kRecords) << writer;
}
