#include "Database/SQLite/ReadTransaction.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <fstream>
#include <string_view>

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

  // The connection refuses this statement from now on; null for none.
  void Deny(const char* statement) {
    sqlite3_set_authorizer(
        database_->GetConnection(),
        [](void* denied, int action, const char* operation, const char*, const char*, const char*) {
          const bool deny = action == SQLITE_TRANSACTION && denied != nullptr &&
                            std::string_view(operation) == static_cast<const char*>(denied);
          return deny ? SQLITE_DENY : SQLITE_OK;
        },
        const_cast<char*>(statement));
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

// Beginning and ending may fail, for instance because memory is short.

TEST_F(ReadTransactionTest, LetsStatementsReadForThemselvesWhereItCannotBegin) {
  Deny("BEGIN");
  const ReadTransaction transaction(database_);
  EXPECT_FALSE(InTransaction());
  SQLContext context;
  ASSERT_EQ(context.Prepare(database_, L"select 1;"), SQLITE_OK);
  EXPECT_EQ(context.Step(), SQLITE_ROW);
}

TEST_F(ReadTransactionTest, LeavesWhatOthersBeginWhereItCouldNot) {
  Deny("BEGIN");
  {
    const ReadTransaction transaction(database_);
    Deny(nullptr);
    Run("begin");
  }
  EXPECT_TRUE(InTransaction());
}

TEST_F(ReadTransactionTest, EndsAlsoWhereItCannotCommit) {
  {
    const ReadTransaction transaction(database_);
    Deny("COMMIT");
  }
  EXPECT_FALSE(InTransaction());
}
