#include "Database/SQLite/SQLContext.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <memory>

#include "tests/support/LogCapture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class SQLContextTest : public testing::Test {
 protected:
  SQLContextTest() {
    sqlite3* opened = nullptr;
    sqlite3_open(":memory:", &opened);
    connection_.reset(opened);
  }

  LogCapture log_;
  std::unique_ptr<sqlite3, decltype(&sqlite3_close)> connection_{nullptr, &sqlite3_close};
};

constexpr wchar_t kFailingStatement[] = L"select abs(-9223372036854775808);";

}  // namespace

TEST_F(SQLContextTest, StepsThroughTheRows) {
  SQLContext context;
  EXPECT_EQ(context.Get(), nullptr);
  ASSERT_EQ(context.Prepare(connection_.get(), L"select 1 union select 2;"), SQLITE_OK);
  EXPECT_EQ(context.Step(), SQLITE_ROW);
  EXPECT_EQ(context.Step(), SQLITE_ROW);
  EXPECT_EQ(context.Step(), SQLITE_DONE);
}

TEST_F(SQLContextTest, PassesCharactersOfEveryLengthToTheLibrary) {
  SQLContext context;
  ASSERT_EQ(context.Prepare(connection_.get(), L"select unicode('\U0001F4A1') + unicode('\u20ac');"), SQLITE_OK);
  ASSERT_EQ(context.Step(), SQLITE_ROW);
  EXPECT_EQ(sqlite3_column_int(context.Get(), 0), 0x1F4A1 + 0x20AC);
}

TEST_F(SQLContextTest, FinalizesTheOldStatementBeforeTheNext) {
  SQLContext context;
  ASSERT_EQ(context.Prepare(connection_.get(), L"select 1;"), SQLITE_OK);
  ASSERT_EQ(context.Prepare(connection_.get(), L"select 2;"), SQLITE_OK);
  EXPECT_EQ(sqlite3_next_stmt(connection_.get(), nullptr), context.Get());
  EXPECT_EQ(sqlite3_next_stmt(connection_.get(), context.Get()), nullptr);
}

TEST_F(SQLContextTest, HoldsNothingAfterAFailedPrepare) {
  SQLContext context;
  ASSERT_EQ(context.Prepare(connection_.get(), L"select 1;"), SQLITE_OK);
  EXPECT_EQ(context.Prepare(connection_.get(), L"no statement"), SQLITE_ERROR);
  EXPECT_EQ(context.Get(), nullptr);
}

TEST_F(SQLContextTest, RefusesAMissingConnection) {
  SQLContext context;
  EXPECT_EQ(context.Prepare(nullptr, L"select 1;"), SQLITE_MISUSE);
}

TEST_F(SQLContextTest, ReleasesItsStatementWithoutALine) {
  {
    SQLContext context;
    ASSERT_EQ(context.Prepare(connection_.get(), L"select 1;"), SQLITE_OK);
    ASSERT_EQ(context.Step(), SQLITE_ROW);
  }
  EXPECT_EQ(sqlite3_next_stmt(connection_.get(), nullptr), nullptr);
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(SQLContextTest, LogsAFailedCleanupWithTheLibrarysGenericText) {
  SQLContext context;
  ASSERT_EQ(context.Prepare(connection_.get(), kFailingStatement), SQLITE_OK);
  ASSERT_EQ(context.Step(), SQLITE_ERROR);
  context.Finalize();
  EXPECT_EQ(context.Get(), nullptr);
  EXPECT_EQ(sqlite3_next_stmt(connection_.get(), nullptr), nullptr);
  EXPECT_THAT(log_.Messages(), ElementsAre(LogCapture::Message{LogSource::General, LogLevel::Info,
                                                               L"Can't cleanup context: out of memory"}));
}
