#include "Database/SQLite/SQLContext.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <fstream>
#include <memory>

#include "Database/SQLite/SQLiteDatabase.h"
#include "tests/support/FakeDatabasePlatform.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TemporaryFolder.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class SQLContextTest : public testing::Test {
 protected:
  SQLContextTest() {
    const std::wstring path = folder_.File(L"Test.db");
    std::ofstream(std::filesystem::path(path)).flush();
    EXPECT_EQ(database_->Open(false, path), SQLITE_OK);
  }

  // The statements of the connection that are at a row.
  int BusyStatements() const {
    int busy = 0;
    sqlite3_stmt* statement = nullptr;
    while ((statement = sqlite3_next_stmt(database_->GetConnection(), statement)) != nullptr) {
      if (sqlite3_stmt_busy(statement) != 0) ++busy;
    }
    return busy;
  }

  LogCapture log_;
  FakeDatabasePlatform platform_;
  TemporaryFolder folder_;
  std::shared_ptr<SQLiteDatabase> database_ = std::make_shared<SQLiteDatabase>();
};

constexpr wchar_t kFailingStatement[] = L"select abs(-9223372036854775808);";

}  // namespace

TEST_F(SQLContextTest, StepsThroughTheRows) {
  SQLContext context;
  EXPECT_EQ(context.Get(), nullptr);
  ASSERT_EQ(context.Prepare(database_, L"select 1 union select 2;"), SQLITE_OK);
  EXPECT_EQ(context.Step(), SQLITE_ROW);
  EXPECT_EQ(context.Step(), SQLITE_ROW);
  EXPECT_EQ(context.Step(), SQLITE_DONE);
}

TEST_F(SQLContextTest, PassesCharactersOfEveryLengthToTheLibrary) {
  SQLContext context;
  ASSERT_EQ(context.Prepare(database_, L"select unicode('\U0001F4A1') + unicode('\u20ac');"), SQLITE_OK);
  ASSERT_EQ(context.Step(), SQLITE_ROW);
  EXPECT_EQ(sqlite3_column_int(context.Get(), 0), 0x1F4A1 + 0x20AC);
}

TEST_F(SQLContextTest, LetsGoOfTheOldStatementBeforeTheNext) {
  SQLContext context;
  ASSERT_EQ(context.Prepare(database_, L"select 1;"), SQLITE_OK);
  ASSERT_EQ(context.Step(), SQLITE_ROW);
  EXPECT_EQ(BusyStatements(), 1);
  ASSERT_EQ(context.Prepare(database_, L"select 2;"), SQLITE_OK);
  EXPECT_EQ(BusyStatements(), 0);
}

TEST_F(SQLContextTest, RunsTheSameStatementAnew) {
  SQLContext context;
  for (int run = 0; run < 2; ++run) {
    ASSERT_EQ(context.Prepare(database_, L"select @Value is null;"), SQLITE_OK);
    ASSERT_EQ(context.Step(), SQLITE_ROW);
    EXPECT_EQ(sqlite3_column_int(context.Get(), 0), 1) << "the value of the run before";
    ASSERT_EQ(context.Prepare(database_, L"select @Value is null;"), SQLITE_OK);
    ASSERT_EQ(sqlite3_bind_int(context.Get(), 1, 7), SQLITE_OK);
    ASSERT_EQ(context.Step(), SQLITE_ROW);
    EXPECT_EQ(sqlite3_column_int(context.Get(), 0), 0);
  }
}

TEST_F(SQLContextTest, HoldsNothingAfterAFailedPrepare) {
  SQLContext context;
  ASSERT_EQ(context.Prepare(database_, L"select 1;"), SQLITE_OK);
  EXPECT_EQ(context.Prepare(database_, L"no statement"), SQLITE_ERROR);
  EXPECT_EQ(context.Get(), nullptr);
}

TEST_F(SQLContextTest, RefusesAMissingOrClosedDatabase) {
  SQLContext context;
  EXPECT_EQ(context.Prepare(nullptr, L"select 1;"), SQLITE_MISUSE);
  database_->Close();
  EXPECT_EQ(context.Prepare(database_, L"select 1;"), SQLITE_MISUSE);
  EXPECT_EQ(context.Get(), nullptr);
}

TEST_F(SQLContextTest, ReleasesItsStatementWithoutALine) {
  {
    SQLContext context;
    ASSERT_EQ(context.Prepare(database_, L"select 1;"), SQLITE_OK);
    ASSERT_EQ(context.Step(), SQLITE_ROW);
  }
  EXPECT_EQ(BusyStatements(), 0);
  EXPECT_EQ(database_->Close(), SQLITE_OK);
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(SQLContextTest, LogsAFailedCleanupWithTheLibrarysGenericText) {
  SQLContext context;
  ASSERT_EQ(context.Prepare(database_, kFailingStatement), SQLITE_OK);
  ASSERT_EQ(context.Step(), SQLITE_ERROR);
  context.Finalize();
  EXPECT_EQ(context.Get(), nullptr);
  EXPECT_EQ(sqlite3_next_stmt(database_->GetConnection(), nullptr), nullptr);
  EXPECT_THAT(log_.Messages(), ElementsAre(LogCapture::Message{LogSource::General, LogLevel::Info,
                                                               L"Can't cleanup context: out of memory"}));
}
