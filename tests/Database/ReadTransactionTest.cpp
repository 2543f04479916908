#include "Database/SQLite/ReadTransaction.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <fstream>

#include "Database/SQLite/SQLContext.h"
#include "Database/SQLite/SQLiteDatabase.h"
#include "tests/support/FakeDatabasePlatform.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TemporaryFolder.h"

namespace {

class ReadTransactionTest : public testing::Test {
 protected:
  ReadTransactionTest() {
    const std::wstring path = folder_.File(L"Test.db");
    std::ofstream(std::filesystem::path(path)).flush();
    EXPECT_EQ(database_->Open(false, path), SQLITE_OK);
  }
  ~ReadTransactionTest() override { EXPECT_TRUE(log_.Messages().empty()); }

  void Run(const char* statement) {
    EXPECT_EQ(sqlite3_exec(database_->GetConnection(), statement, nullptr, nullptr, nullptr), SQLITE_OK);
  }

  bool InTransaction() const { return sqlite3_get_autocommit(database_->GetConnection()) == 0; }

  LogCapture log_;
  FakeDatabasePlatform platform_;
  TemporaryFolder folder_;
  std::shared_ptr<SQLiteDatabase> database_ = std::make_shared<SQLiteDatabase>();
};

}  // namespace

TEST_F(ReadTransactionTest, LastsAsLongAsTheObject) {
  {
    const ReadTransaction transaction(database_);
    EXPECT_TRUE(InTransaction());
  }
  EXPECT_FALSE(InTransaction());
}

TEST_F(ReadTransactionTest, JoinsTheOneThatIsUnderWay) {
  const ReadTransaction outer(database_);
  { const ReadTransaction inner(database_); }
  EXPECT_TRUE(InTransaction());
}

TEST_F(ReadTransactionTest, LeavesTheTransactionOfSomebodyElse) {
  Run("begin immediate");
  { const ReadTransaction transaction(database_); }
  EXPECT_TRUE(InTransaction());
  Run("rollback");
}

TEST_F(ReadTransactionTest, LocksNothingBeforeTheFirstReading) {
  const ReadTransaction transaction(database_);
  EXPECT_EQ(sqlite3_txn_state(database_->GetConnection(), nullptr), SQLITE_TXN_NONE);
}

TEST_F(ReadTransactionTest, MayBeEndedByAFailure) {
  const ReadTransaction transaction(database_);
  Run("rollback");
}

TEST_F(ReadTransactionTest, IsNothingWithoutAnOpenDatabase) {
  { const ReadTransaction transaction(nullptr); }
  database_->Close();
  const ReadTransaction transaction(database_);
}

TEST_F(ReadTransactionTest, SurvivesTheClosingOfTheDatabase) {
  const ReadTransaction transaction(database_);
  EXPECT_EQ(database_->Close(), SQLITE_OK);
}

// The layer must be able to read where beginning fails, for instance because memory is short.
TEST_F(ReadTransactionTest, LetsStatementsReadForThemselvesWhereItCannotBegin) {
  sqlite3_set_authorizer(
      database_->GetConnection(),
      [](void*, int action, const char*, const char*, const char*, const char*) {
        return action == SQLITE_TRANSACTION ? SQLITE_DENY : SQLITE_OK;
      },
      nullptr);
  const ReadTransaction transaction(database_);
  EXPECT_FALSE(InTransaction());
  SQLContext context;
  ASSERT_EQ(context.Prepare(database_, L"select 1;"), SQLITE_OK);
  EXPECT_EQ(context.Step(), SQLITE_ROW);
}
