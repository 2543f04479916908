#include "tests/support/FaultyFileSystem.h"

#include "tests/WaylineDll/Store/StoreTest.h"

#ifndef _WIN32
#include "tests/support/ForkedProcess.h"
#endif

namespace {

class FaultyFileSystemTest : public StoreTest {
 protected:
  void MakeNumbers() const {
    ASSERT_EQ(Sql("CREATE TABLE Numbers (Number INTEGER); INSERT INTO Numbers VALUES (1)"), "");
  }

  std::string AddLargeValue() const { return Sql("INSERT INTO Numbers VALUES (zeroblob(100000))"); }
};

}  // namespace

TEST_F(FaultyFileSystemTest, LetsSqliteWorkAndCountsWhatItDoes) {
  const FaultyFileSystem files;
  EXPECT_EQ(files.Operations(), 0);
  MakeNumbers();
  const int operations = files.Operations();
  EXPECT_GT(operations, 5);
  EXPECT_EQ(Sql("SELECT sum(Number) FROM Numbers"), "1");
  EXPECT_GT(files.Operations(), operations);
}

TEST_F(FaultyFileSystemTest, IsFullWhenItsRoomIsTaken) {
  MakeNumbers();
  FaultyFileSystem files;
  files.FullAfter(60'000);
  EXPECT_EQ(AddLargeValue(), "database or disk is full");
  EXPECT_EQ(Sql("SELECT count(*) FROM Numbers"), "1");
  files.MakeRoom();
  EXPECT_EQ(AddLargeValue(), "");
  EXPECT_EQ(Sql("SELECT count(*) FROM Numbers"), "2");
}

#ifndef _WIN32
TEST_F(FaultyFileSystemTest, EndsTheProcessAtTheOperationThatItIsTold) {
  MakeNumbers();
  int operations = 0;
  {
    const FaultyFileSystem files;
    Sql("UPDATE Numbers SET Number = 2");
    operations = files.Operations();
  }
  const auto update = [&](int operation, FaultyFileSystem::Moment moment) {
    Sql("UPDATE Numbers SET Number = 3");
    return DoInForkedProcess([&] {
      FaultyFileSystem files;
      files.DieAt(operation, moment);
      Sql("UPDATE Numbers SET Number = 4");
    });
  };
  EXPECT_EQ(update(operations + 1, FaultyFileSystem::Moment::Before), ForkedEnd::Succeeded);
  EXPECT_EQ(Sql("SELECT Number FROM Numbers"), "4");
  EXPECT_EQ(update(1, FaultyFileSystem::Moment::Before), ForkedEnd::Killed);
  EXPECT_EQ(Sql("SELECT Number FROM Numbers"), "3");
  // The last one deletes the journal, and so commits.
  EXPECT_EQ(update(operations, FaultyFileSystem::Moment::Before), ForkedEnd::Killed);
  EXPECT_EQ(Sql("SELECT Number FROM Numbers"), "3");
  EXPECT_EQ(update(operations, FaultyFileSystem::Moment::After), ForkedEnd::Killed);
  EXPECT_EQ(Sql("SELECT Number FROM Numbers"), "4");
}
#endif
