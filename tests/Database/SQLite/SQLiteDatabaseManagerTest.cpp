#include "Database/SQLite/SQLiteDatabaseManager.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <fstream>

#include "tests/support/FakeDatabasePlatform.h"
#include "tests/support/LogCapture.h"
#include "tests/support/SqliteLibraryReset.h"
#include "tests/support/TemporaryFolder.h"

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

namespace {

class SQLiteDatabaseManagerTest : public testing::Test {
 protected:
  SQLiteDatabaseManagerTest() { FakeDatabasePlatform::state.userDataDirectory = folder_.Path().wstring(); }

  std::wstring MakeDatabase(const std::wstring& name) {
    std::wstring path = folder_.File(name);
    std::ofstream(std::filesystem::path(path)).flush();
    return path;
  }

  std::vector<std::wstring> Lines() const {
    std::vector<std::wstring> lines;
    for (const auto& message : log_.Messages()) lines.push_back(message.text);
    return lines;
  }

  LogCapture log_;
  FakeDatabasePlatform platform_;
  TemporaryFolder folder_;
};

}  // namespace

TEST_F(SQLiteDatabaseManagerTest, ComposesPathsWithDefaults) {
  EXPECT_EQ(SQLiteDatabaseManager::ComposePath(L"", L""), folder_.File(L"Wayline.db"));
  EXPECT_EQ(SQLiteDatabaseManager::ComposePath(L"", L"x.db"), folder_.File(L"x.db"));
  const std::filesystem::path other = folder_.Path() / L"other";
  EXPECT_EQ(SQLiteDatabaseManager::ComposePath(other.wstring(), L""), (other / L"Wayline.db").wstring());
  EXPECT_EQ(SQLiteDatabaseManager::ComposePath(other.wstring(), L"x.db"), (other / L"x.db").wstring());
}

TEST_F(SQLiteDatabaseManagerTest, TakesTheFileThatThePlatformNamesWhereNothingIsSaid) {
  databasePlatform.settingsFile = [] { return std::wstring(L"/elsewhere/Mine.db"); };
  EXPECT_EQ(SQLiteDatabaseManager::ComposePath({}, {}), L"/elsewhere/Mine.db");
  EXPECT_EQ(SQLiteDatabaseManager::ComposePath({}, L"x.db"), folder_.File(L"x.db"));
  EXPECT_EQ(SQLiteDatabaseManager::ComposePath(L"other", {}),
            (std::filesystem::path("other") / L"Wayline.db").wstring());
  FakeDatabasePlatform::state.userDataDirectory.clear();
  EXPECT_EQ(SQLiteDatabaseManager::ComposePath({}, {}), L"/elsewhere/Mine.db");
}

TEST_F(SQLiteDatabaseManagerTest, DoesNotLookInTheCurrentDirectoryWithoutADataDirectory) {
  FakeDatabasePlatform::state.userDataDirectory.clear();
  EXPECT_EQ(SQLiteDatabaseManager::ComposePath({}, {}), L"");
  EXPECT_EQ(SQLiteDatabaseManager::ComposePath({}, L"Other.db"), L"");
  EXPECT_EQ(SQLiteDatabaseManager().GetDatabase({})->GetResult(), SQLITE_CANTOPEN);
}

TEST_F(SQLiteDatabaseManagerTest, HandsOutOneDatabasePerPath) {
  SQLiteDatabaseManager manager;
  const std::wstring path = MakeDatabase(L"a.db");
  const auto first = manager.GetDatabase(path);
  EXPECT_NE(first->GetConnection(), nullptr);
  EXPECT_EQ(manager.GetDatabase(path), first);
  EXPECT_NE(manager.GetDatabase(MakeDatabase(L"b.db")), first);
}

TEST_F(SQLiteDatabaseManagerTest, TakesPathsInOtherCaseForOtherDatabases) {
  SQLiteDatabaseManager manager;
  const auto lower = manager.GetDatabase(MakeDatabase(L"a.db"));
  const auto upper = manager.GetDatabase(MakeDatabase(L"A.db"));
  ASSERT_NE(lower->GetConnection(), nullptr);
  ASSERT_NE(upper->GetConnection(), nullptr);
  EXPECT_NE(lower->GetConnection(), upper->GetConnection());
}

TEST_F(SQLiteDatabaseManagerTest, OpensTheDefaultDatabaseForAnEmptyPath) {
  const std::wstring path = MakeDatabase(L"Wayline.db");
  SQLiteDatabaseManager manager;
  const auto database = manager.GetDatabase(L"");
  EXPECT_EQ(database->GetPath(), path);
  EXPECT_EQ(database->GetResult(), 0);
  EXPECT_EQ(manager.GetDatabase(path), database);
}

TEST_F(SQLiteDatabaseManagerTest, KeepsADatabaseThatFailedToOpen) {
  SQLiteDatabaseManager manager;
  const auto failed = manager.GetDatabase(folder_.File(L"late.db"));
  ASSERT_NE(failed, nullptr);
  EXPECT_EQ(failed->GetResult(), SQLITE_CANTOPEN);
  EXPECT_EQ(manager.GetDatabase(MakeDatabase(L"late.db")), failed);
  EXPECT_EQ(failed->GetResult(), SQLITE_CANTOPEN);
  EXPECT_EQ(failed->GetConnection(), nullptr);
  EXPECT_THAT(Lines(), SizeIs(1)) << "not tried again";
}

TEST_F(SQLiteDatabaseManagerTest, ConfiguresTheLibraryWithItsFirstDatabaseOnly) {
  const SqliteLibraryReset library;
  sqlite3_initialize();  // the statement log is then seen to be refused
  FakeDatabasePlatform::state.tracing = true;
  FakeDatabasePlatform::state.firstInstance = true;
  SQLiteDatabaseManager manager;
  manager.GetDatabase(MakeDatabase(L"a.db"));
  EXPECT_THAT(Lines(), Contains(HasSubstr(L"SQLITE_CONFIG_SQLLOG")));
  const size_t before = Lines().size();
  manager.GetDatabase(MakeDatabase(L"b.db"));
  ASSERT_THAT(Lines(), SizeIs(before + 1));
  EXPECT_EQ(Lines().back(), L"[0x001a2] Opening database " + folder_.File(L"b.db") + L" - process C:\\host.exe");
}

TEST_F(SQLiteDatabaseManagerTest, ConfiguresTheLibraryOnlyInTheFirstProcess) {
  sqlite3_initialize();
  FakeDatabasePlatform::state.tracing = true;
  SQLiteDatabaseManager manager;
  manager.GetDatabase(MakeDatabase(L"a.db"));
  EXPECT_THAT(Lines(), ElementsAre(HasSubstr(L"Opening database")));
}

TEST_F(SQLiteDatabaseManagerTest, ClosesEveryDatabaseInOrderEvenWhileInUse) {
  std::shared_ptr<SQLiteDatabase> inUse;
  {
    SQLiteDatabaseManager manager;
    manager.GetDatabase(MakeDatabase(L"a.db"));
    inUse = manager.GetDatabase(MakeDatabase(L"b.db"));
    manager.GetDatabase(MakeDatabase(L"c.db"));
    FakeDatabasePlatform::state.tracing = true;
  }
  EXPECT_EQ(inUse->GetConnection(), nullptr);
  const std::wstring process = L" - process C:\\host.exe";
  EXPECT_THAT(Lines(), ElementsAre(L"Closing database " + folder_.File(L"a.db") + process,
                                   L"Closing database " + folder_.File(L"b.db") + process,
                                   L"Closing database " + folder_.File(L"c.db") + process));
}
