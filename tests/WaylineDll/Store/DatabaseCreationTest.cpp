#include "WaylineDll/Store/DatabaseCreation.h"

#include <sqlite3.h>

#include <array>
#include <filesystem>

#include "tests/support/FaultyFileSystem.h"
#include "tests/support/InThreads.h"
#include "tests/WaylineDll/Store/StoreTest.h"

#ifndef _WIN32
#include "tests/support/ForkedProcess.h"
#endif

using std::filesystem::path;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class DatabaseCreationTest : public StoreTest {};

}  // namespace

TEST_F(DatabaseCreationTest, MakesACompleteFileAndNothingElse) {
  EXPECT_EQ(CreateDatabaseFile(file_), Failure());
  EXPECT_THAT(FilesInFolder(), ElementsAre("Wayline.db"));
  EXPECT_EQ(Sql("PRAGMA integrity_check"), "ok");
  EXPECT_EQ(std::filesystem::hard_link_count(path(file_)), 1u);
}

TEST_F(DatabaseCreationTest, IsNotSpoiltByWhatADatabaseOfBeforeHadNotFinished) {
  ASSERT_EQ(CreateDatabaseFile(file_), Failure());
  // Otherwise its pages are those of the new one.
  Sql("UPDATE Profiles SET Name = 'Before'");
  const path journal = file_ + L"-journal";
  const path kept = file_ + L"-kept";
  {
    // As a program leaves it that ends while it saves. Without syncing, the journal counts from its first page on.
    const FileLock otherProgram(
        file_, "PRAGMA synchronous = OFF; BEGIN; UPDATE Profiles SET HelpdeskText = hex(zeroblob(20000))");
    std::filesystem::copy_file(journal, kept);
  }
  std::filesystem::remove(path(file_));
  std::filesystem::rename(kept, journal);
  ASSERT_EQ(CreateDatabaseFile(file_), Failure());
  EXPECT_EQ(Sql("PRAGMA integrity_check"), "ok");
  EXPECT_EQ(Sql("SELECT count(*), sum(Name = 'Before'), sum(HelpdeskText IS NULL) FROM Profiles"), "9|0|8");
}

TEST_F(DatabaseCreationTest, LeavesADatabaseThatIsThereMeanwhile) {
  ASSERT_EQ(CreateDatabaseFile(file_), Failure());
  Sql("DELETE FROM ClientState");
  EXPECT_EQ(CreateDatabaseFile(file_), std::nullopt);
  EXPECT_EQ(Sql("SELECT count(*) FROM ClientState"), "0");
  EXPECT_THAT(FilesInFolder(), ElementsAre("Wayline.db"));
}

TEST_F(DatabaseCreationTest, ProgramsThatCreateAtTheSameTimeUseOneFile) {
  constexpr int kRounds = 15;
  for (int round = 0; round < kRounds; ++round) {
    std::filesystem::remove(path(file_));
    std::array<Failure, kThreads> failures;
    InThreads([&](int thread) {
      failures[static_cast<size_t>(thread)] = CreateDatabaseFile(file_);
      Sql("PRAGMA busy_timeout = 10000; INSERT INTO Services VALUES (" + std::to_string(900 + thread) + ", 'x', 'x')");
    });
    ASSERT_THAT(failures, testing::Each(Failure())) << round;
    ASSERT_EQ(Sql("SELECT count(*) FROM Services WHERE ServiceId >= 900"), std::to_string(kThreads)) << round;
    ASSERT_THAT(FilesInFolder(), ElementsAre("Wayline.db"));
  }
}

TEST_F(DatabaseCreationTest, MakesNothingInAFolderThatDoesNotExist) {
  const std::wstring lost = folder_.File(L"none") + L"/Wayline.db";
  EXPECT_EQ(CreateDatabaseFile(lost),
            L"The settings database \"" + lost +
                L"\" cannot be created: the file is protected, in use, or in a folder that does not exist.");
  EXPECT_THAT(FilesInFolder(), IsEmpty());
}

TEST_F(DatabaseCreationTest, LeavesNothingOnAFullDisk) {
  FaultyFileSystem files;
  for (const int64_t room : {0, 5000, 40'000}) {
    files.FullAfter(room);
    EXPECT_EQ(CreateDatabaseFile(file_),
              L"The settings database \"" + file_ + L"\" cannot be created: the disk is full.");
    EXPECT_THAT(FilesInFolder(), IsEmpty());
  }
}

#ifndef _WIN32
TEST_F(DatabaseCreationTest, AFileThatIsThereIsCompleteWheneverTheProgramIsKilled) {
  int operations = 0;
  {
    const FaultyFileSystem files;
    ASSERT_EQ(CreateDatabaseFile(file_), Failure());
    operations = files.Operations();
  }
  for (int operation = 1; operation <= operations; ++operation) {
    std::filesystem::remove(path(file_));
    const ForkedEnd end = DoInForkedProcess([&] {
      FaultyFileSystem files;
      files.DieAt(operation, FaultyFileSystem::Moment::Halfway);
      CreateDatabaseFile(file_);
    });
    EXPECT_EQ(end, ForkedEnd::Killed);
    EXPECT_FALSE(std::filesystem::exists(path(file_))) << operation;
  }
}
#endif
