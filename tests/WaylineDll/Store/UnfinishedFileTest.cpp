#include "WaylineDll/Store/UnfinishedFile.h"

#include <gmock/gmock.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <thread>
#include <vector>

#include "tests/support/FileBytes.h"
#include "tests/support/TemporaryFolder.h"

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
  constexpr int kRounds = 500;
  for (int round = 0; round < kRounds; ++round) {
    std::filesystem::remove(path(file_));
    std::atomic<int> waiting = 2;
    // What each of them finds under the name once it has been told that all is well.
    std::string found[2];
    {
      std::vector<std::jthread> programs;
      for (const int program : {0, 1}) {
        programs.emplace_back([&, program] {
          const UnfinishedFile unfinished(file_);
          Write(unfinished.Name(), std::to_string(program));
          for (--waiting; waiting > 0;) std::this_thread::yield();
          EXPECT_EQ(unfinished.AppearIfMissing(), std::error_code());
          found[program] = FileBytes(file_);
        });
      }
    }
    ASSERT_EQ(found[0], found[1]) << round;
    ASSERT_EQ(FileBytes(file_), found[0]) << round;
  }
}
