#include "WaylineDll/Store/UnfinishedFile.h"

#include <gmock/gmock.h>

#include <array>
#include <filesystem>
#include <fstream>

#include "tests/support/FileBytes.h"
#include "tests/support/InThreads.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WaitUntil.h"

using std::filesystem::path;

namespace {

void Write(const std::wstring& file, const std::string& text) { std::ofstream(path(file), std::ios::binary) << text; }

class UnfinishedFileTest : public testing::Test {
 protected:
  size_t FilesInFolder() const {
    const std::filesystem::directory_iterator files(folder_.Path());
    return static_cast<size_t>(std::distance(begin(files), end(files)));
  }

  TemporaryFolder folder_;
  std::wstring file_ = folder_.File(L"final.db");
};

}  // namespace

TEST_F(UnfinishedFileTest, IsGoneUnlessItGotItsName) {
  {
    const UnfinishedFile unfinished(file_);
    Write(unfinished.Name(), "text");
    Write(unfinished.Name() + L"-journal", "text");
  }
  EXPECT_EQ(FilesInFolder(), 0u);
}

TEST_F(UnfinishedFileTest, AppearsUnderItsNameAlone) {
  {
    const UnfinishedFile unfinished(file_);
    Write(unfinished.Name(), "text");
    EXPECT_EQ(unfinished.AppearIfMissing(), std::error_code());
  }
  EXPECT_EQ(FileBytes(file_), "text");
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(UnfinishedFileTest, TakesThePlaceOfAnother) {
  Write(file_, "before");
  {
    const UnfinishedFile unfinished(file_);
    Write(unfinished.Name(), "text");
    EXPECT_EQ(unfinished.TakePlace(), std::error_code());
  }
  EXPECT_EQ(FileBytes(file_), "text");
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(UnfinishedFileTest, OfThoseThatAppearAtTheSameTimeTheFirstStays) {
  constexpr int kRounds = 30;
  for (int round = 0; round < kRounds; ++round) {
    std::filesystem::remove(path(file_));
    MeetingPoint meeting;
    std::array<std::error_code, kThreads> errors;
    // What each of them finds under the name once it has been told that all is well.
    std::array<std::string, kThreads> found;
    InThreads([&](int thread) {
      const auto own = static_cast<size_t>(thread);
      const UnfinishedFile unfinished(file_);
      Write(unfinished.Name(), std::to_string(thread));
      meeting.Arrive();
      errors[own] = unfinished.AppearIfMissing();
      // Windows keeps others out for a moment while a file is renamed.
      WaitUntil([&] { return !(found[own] = FileBytes(file_)).empty(); });
    });
    ASSERT_THAT(errors, testing::Each(std::error_code())) << round;
    ASSERT_THAT(found, testing::Each(FileBytes(file_))) << round;
  }
}
