#include "NetUtilities/Files/TextFileCache.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string_view>

#include "tests/support/TemporaryFolder.h"

namespace {

using namespace std::chrono_literals;
using std::filesystem::file_time_type;

class TextFileCacheTest : public testing::Test {
 protected:
  // Writes a text, at the time that the clock says.
  void WriteNow(std::string_view text) { std::ofstream(file, std::ios::binary) << text; }

  // Writes a text that is older than anything that needs care, and newer than the one before.
  void Write(std::string_view text) {
    WriteNow(text);
    SetTime(lastWrite += 10s);
  }

  void SetTime(file_time_type time) { std::filesystem::last_write_time(file, time); }

  std::wstring Text() { return *cache.TextOf(file); }

  const TemporaryFolder folder;
  const std::filesystem::path file = folder.Path() / "file.ini";
  file_time_type lastWrite = file_time_type::clock::now() - 24h;
  TextFileCache cache;
};

TEST_F(TextFileCacheTest, GivesTheTextOfAFile) {
  Write("[Misc]\r\nName = caf\xc3\xa9");
  EXPECT_EQ(Text(), L"[Misc]\r\nName = caf\u00e9");
}

TEST_F(TextFileCacheTest, GivesAnEmptyTextForAnEmptyFile) {
  Write("");
  EXPECT_EQ(Text(), L"");
}

TEST_F(TextFileCacheTest, DecodesByTheByteOrderMark) {
  Write(std::string_view("\xFF\xFE\x61\x00\xE9\x00", 6));
  EXPECT_EQ(Text(), L"a\u00e9");
}

TEST_F(TextFileCacheTest, ReadsAFileLongerThanAnyBuffer) {
  const std::string line(1'000'000, 'x');
  Write(line + "\nend");
  EXPECT_EQ(Text(), std::wstring(line.begin(), line.end()) + L"\nend");
}

TEST_F(TextFileCacheTest, ReadsAFileOnceHoweverOftenItIsAsked) {
  Write("first");
  const TextFileCache::Text copy = cache.TextOf(file);
  for (int call = 0; call < 5000; ++call) ASSERT_EQ(cache.TextOf(file), copy) << "Another copy was made.";
  // By its time, this is still the file that was read.
  WriteNow("other");
  SetTime(lastWrite);
  EXPECT_EQ(Text(), L"first");
}

TEST_F(TextFileCacheTest, ReadsAFileAgainWhenItsTimeDiffers) {
  Write("first");
  EXPECT_EQ(Text(), L"first");
  Write("second");
  EXPECT_EQ(Text(), L"second");
  WriteNow("restored");
  SetTime(lastWrite - 1h);
  EXPECT_EQ(Text(), L"restored") << "An older file is another file too.";
}

TEST_F(TextFileCacheTest, SeesEveryChangeOfAFileThatWasJustWritten) {
  const file_time_type justNow = file_time_type::clock::now() - 100ms;
  for (int change = 0; change < 10; ++change) {
    WriteNow(std::to_string(change));
    SetTime(justNow);
    ASSERT_EQ(Text(), std::to_wstring(change)) << "Its time could not tell.";
  }
}

TEST_F(TextFileCacheTest, LeavesACopyAsItIsWhenTheFileChanges) {
  Write("first");
  const TextFileCache::Text copy = cache.TextOf(file);
  Write("second");
  EXPECT_EQ(Text(), L"second");
  EXPECT_EQ(*copy, L"first");
}

TEST_F(TextFileCacheTest, NoticesThatAFileAppearsAndVanishes) {
  EXPECT_EQ(Text(), L"");
  Write("there");
  EXPECT_EQ(Text(), L"there");
  std::filesystem::remove(file);
  EXPECT_EQ(Text(), L"");
  WriteNow("back");
  SetTime(lastWrite);
  EXPECT_EQ(Text(), L"back") << "The time is that of the file that was there before.";
}

// What is at the path but cannot be opened, like a file that another process has locked.
TEST_F(TextFileCacheTest, TriesAgainWhenAFileCannotBeRead) {
  std::filesystem::create_directory(file);
  EXPECT_EQ(Text(), L"");
  std::filesystem::remove(file);
  Write("readable");
  EXPECT_EQ(Text(), L"readable");
}

TEST_F(TextFileCacheTest, KeepsTheLastTextOfAFileThatCannotBeRead) {
  Write("before");
  EXPECT_EQ(Text(), L"before");
  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  EXPECT_EQ(Text(), L"before");
  EXPECT_EQ(Text(), L"before");
  std::filesystem::remove(file);
  Write("after");
  EXPECT_EQ(Text(), L"after");
}

TEST_F(TextFileCacheTest, KeepsTheTextsOfSeveralFilesApart) {
  const std::filesystem::path other = folder.Path() / "other.ini";
  std::ofstream(other) << "other";
  Write("file");
  EXPECT_EQ(*cache.TextOf(other), L"other");
  EXPECT_EQ(Text(), L"file");
  EXPECT_EQ(*cache.TextOf(other), L"other");
}

}  // namespace
