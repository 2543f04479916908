#include "Database/SQLite/SQLiteDatabase.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <fstream>
#include <type_traits>

#include "Database/SQLite/SQLContext.h"
#include "NetUtilities/Text/Format.h"
#include "tests/support/FakeDatabasePlatform.h"
#include "tests/support/LogCapture.h"
#include "tests/support/SqliteLibraryReset.h"
#include "tests/support/TemporaryFolder.h"

using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

namespace {

class SQLiteDatabaseTest : public testing::Test {
 protected:
  std::wstring MakeDatabase(const std::wstring& name) {
    std::wstring path = folder_.File(name);
    std::ofstream(std::filesystem::path(path)).flush();  // an empty file is an empty database
    return path;
  }

  static void Trace() { FakeDatabasePlatform::state.tracing = true; }

  LogCapture log_;
  FakeDatabasePlatform platform_;
  TemporaryFolder folder_;
};

// While it lives, SQLite gets no memory for anything of the size of a connection.
class ShortMemory {
 public:
  ShortMemory() {
    sqlite3_config(SQLITE_CONFIG_GETMALLOC, &usual_);
    sqlite3_mem_methods failing = usual_;
    failing.xMalloc = [](int size) { return size < kSizeOfConnection ? usual_.xMalloc(size) : nullptr; };
    sqlite3_config(SQLITE_CONFIG_MALLOC, &failing);
  }
  ~ShortMemory() {
    sqlite3_shutdown();
    sqlite3_config(SQLITE_CONFIG_MALLOC, &usual_);
  }
  ShortMemory(const ShortMemory&) = delete;
  ShortMemory& operator=(const ShortMemory&) = delete;

 private:
  static constexpr int kSizeOfConnection = 400;
  inline static sqlite3_mem_methods usual_;
};

// Since version 3.42 the error log can be set in a library that is in use; the statement log never can.
bool TakesErrorLogInUse() { return sqlite3_libversion_number() >= 3042000; }

bool HasStatementLog() { return sqlite3_compileoption_used("ENABLE_SQLLOG") != 0; }

LogCapture::Message General(LogLevel level, const std::wstring& text) { return {LogSource::General, level, text}; }
LogCapture::Message Database(LogLevel level, const std::wstring& text) { return {LogSource::Database, level, text}; }

}  // namespace

TEST_F(SQLiteDatabaseTest, OpensAndClosesSilently) {
  SQLiteDatabase database;
  EXPECT_EQ(database.Open(false, MakeDatabase(L"a.db")), 0);
  EXPECT_NE(database.GetConnection(), nullptr);
  EXPECT_EQ(database.Close(), 0);
  EXPECT_EQ(database.GetConnection(), nullptr);
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(SQLiteDatabaseTest, LogsOpeningAndClosingWhenTraced) {
  Trace();
  const std::wstring path = MakeDatabase(L"a.db");
  SQLiteDatabase database;
  database.Open(false, path);
  database.Close();
  EXPECT_THAT(
      log_.Messages(),
      ElementsAre(Database(LogLevel::Detail, L"[0x001a2] Opening database " + path + L" - process C:\\host.exe"),
                  Database(LogLevel::Detail, L"Closing database " + path + L" - process C:\\host.exe")));
}

TEST_F(SQLiteDatabaseTest, OpensPathsBeyondAscii) {
  if constexpr (!std::is_same_v<std::filesystem::path::value_type, wchar_t>) {
    GTEST_SKIP() << "the standard library cannot convert wide paths on this system";
  }
  std::filesystem::create_directory(folder_.Path() / L"gr\u00fc\u00df \u20ac");
  const std::wstring path = (folder_.Path() / L"gr\u00fc\u00df \u20ac" / L"\u6587.db").wstring();
  std::ofstream(std::filesystem::path(path)).flush();
  SQLiteDatabase database;
  EXPECT_EQ(database.Open(false, path), 0);
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(SQLiteDatabaseTest, OpensForWritingAndForSeveralThreads) {
  SQLiteDatabase database;
  ASSERT_EQ(database.Open(false, MakeDatabase(L"a.db")), 0);
  EXPECT_EQ(sqlite3_db_readonly(database.GetConnection(), "main"), 0);
  EXPECT_NE(sqlite3_db_mutex(database.GetConnection()), nullptr);
}

TEST_F(SQLiteDatabaseTest, DoesNothingWhileOpen) {
  const std::wstring path = MakeDatabase(L"a.db");
  SQLiteDatabase database;
  ASSERT_EQ(database.Open(false, path), 0);
  sqlite3* const connection = database.GetConnection();
  EXPECT_EQ(database.Open(false, folder_.File(L"missing.db")), 0);
  EXPECT_EQ(database.GetConnection(), connection);
  EXPECT_EQ(database.GetPath(), path);
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(SQLiteDatabaseTest, NeverCreatesAMissingFile) {
  const std::wstring path = folder_.File(L"missing.db");
  SQLiteDatabase database;
  EXPECT_EQ(database.Open(true, path), SQLITE_CANTOPEN);
  EXPECT_EQ(database.GetResult(), 14);
  EXPECT_EQ(database.GetPath(), path);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(path)));
  EXPECT_THAT(log_.Messages(), ElementsAre(General(LogLevel::Info, L"database not found: " + path)));
  EXPECT_THAT(FakeDatabasePlatform::state.mutexNames, IsEmpty());
}

TEST_F(SQLiteDatabaseTest, RaisesAFailureOfTheFileSystem) {
  const std::wstring path = folder_.File(std::wstring(5000, L'x'));
  std::error_code failure;
  (void)std::filesystem::status(std::filesystem::path(path), failure);
  if (failure == std::errc::no_such_file_or_directory)
    GTEST_SKIP() << "the system takes an overlong name for a missing file";
  SQLiteDatabase database;
  EXPECT_THROW(database.Open(false, path), std::filesystem::filesystem_error);
}

TEST_F(SQLiteDatabaseTest, LogsWhatCannotBeOpened) {
  const std::wstring path = folder_.Path().wstring();  // a folder exists and is no database
  SQLiteDatabase database;
  const int32_t result = database.Open(false, path);
  EXPECT_EQ(result & 0xff, SQLITE_CANTOPEN);
  EXPECT_EQ(database.GetResult(), result);
  EXPECT_EQ(database.GetConnection(), nullptr);
  EXPECT_EQ(FakeDatabasePlatform::state.openMutexes, 0);
  EXPECT_THAT(log_.Messages(),
              ElementsAre(General(LogLevel::Error,
                                  Format(L"Can't open database {}: {} - unable to open database file", path, result))));
}

TEST_F(SQLiteDatabaseTest, HasNothingToCloseAfterAFailedOpen) {
  Trace();
  SQLiteDatabase missing;
  missing.Open(false, folder_.File(L"missing.db"));
  SQLiteDatabase folder;
  folder.Open(false, folder_.Path().wstring());
  const size_t lines = log_.Messages().size();
  EXPECT_EQ(missing.Close(), 0);
  EXPECT_EQ(folder.Close(), 0);
  EXPECT_THAT(log_.Messages(), SizeIs(lines));
}

TEST_F(SQLiteDatabaseTest, ReleasesTheMutexWhenMemoryIsShort) {
  const SqliteLibraryReset library;
  const std::wstring path = MakeDatabase(L"a.db");
  SQLiteDatabase database;
  {
    const ShortMemory memory;
    EXPECT_EQ(database.Open(false, path), SQLITE_NOMEM);
  }
  EXPECT_EQ(database.GetConnection(), nullptr);
  EXPECT_EQ(FakeDatabasePlatform::state.openMutexes, 0);
  EXPECT_THAT(log_.Messages(), ElementsAre(General(LogLevel::Error, L"Can't open database " + path + L": 7 - ")));
}

TEST_F(SQLiteDatabaseTest, CanBeOpenedAgainAfterClosing) {
  const std::wstring path = MakeDatabase(L"a.db");
  SQLiteDatabase database;
  EXPECT_EQ(database.Open(false, folder_.File(L"missing.db")), SQLITE_CANTOPEN);
  EXPECT_EQ(database.Open(false, path), 0);
  EXPECT_EQ(database.GetResult(), 0);
  database.Close();
  EXPECT_EQ(database.Open(false, path), 0);
}

TEST_F(SQLiteDatabaseTest, ClosesWhenDestroyed) {
  Trace();
  const std::wstring path = MakeDatabase(L"a.db");
  {
    SQLiteDatabase database;
    database.Open(false, path);
  }
  EXPECT_EQ(log_.Messages().back(),
            Database(LogLevel::Detail, L"Closing database " + path + L" - process C:\\host.exe"));
}

TEST_F(SQLiteDatabaseTest, SendsAFailureToCloseToTheDebuggerOnly) {
  const auto database = std::make_shared<SQLiteDatabase>();
  ASSERT_EQ(database->Open(false, MakeDatabase(L"a.db")), 0);
  sqlite3* const connection = database->GetConnection();
  {
    SQLContext inUse;
    ASSERT_EQ(inUse.Prepare(database, L"select 1;"), 0);
    EXPECT_EQ(database->Close(), SQLITE_BUSY);
    EXPECT_EQ(database->GetConnection(), nullptr);
    EXPECT_EQ(FakeDatabasePlatform::state.openMutexes, 0);
  }
  EXPECT_THAT(FakeDatabasePlatform::state.debuggerMessages,
              ElementsAre(L"SQLite Can't close database: 5 - unable to close due to unfinalized statements or "
                          L"unfinished backups"));
  EXPECT_THAT(log_.Messages(), IsEmpty());
  sqlite3_close(connection);  // the database has given it up
}

TEST_F(SQLiteDatabaseTest, HoldsTheNamedMutexWhileOpen) {
  SQLiteDatabase database;
  database.Open(false, MakeDatabase(L"a.db"));
  EXPECT_THAT(FakeDatabasePlatform::state.mutexNames, ElementsAre(L"Global\\TARN_Database"));
  EXPECT_EQ(FakeDatabasePlatform::state.openMutexes, 1);
  database.Close();
  EXPECT_EQ(FakeDatabasePlatform::state.openMutexes, 0);
}

// Statements

TEST_F(SQLiteDatabaseTest, HandsOutAKeptStatementAgain) {
  SQLiteDatabase database;
  database.Open(false, MakeDatabase(L"a.db"));
  PreparedStatement statement;
  ASSERT_EQ(database.TakeStatement(L"select 1;", statement), SQLITE_OK);
  const sqlite3_stmt* const first = statement.handle.get();
  PreparedStatement meanwhile;
  ASSERT_EQ(database.TakeStatement(L"select 1;", meanwhile), SQLITE_OK);
  EXPECT_NE(meanwhile.handle.get(), first);
  database.KeepStatement(std::move(statement));
  ASSERT_EQ(database.TakeStatement(L"select 1; ", statement), SQLITE_OK);
  EXPECT_NE(statement.handle.get(), first);
  ASSERT_EQ(database.TakeStatement(L"select 1;", statement), SQLITE_OK);
  EXPECT_EQ(statement.handle.get(), first);
}

TEST_F(SQLiteDatabaseTest, KeepsTheLatestStatementsOnly) {
  SQLiteDatabase database;
  database.Open(false, MakeDatabase(L"a.db"));
  for (int number = 0; number < 50; ++number) {
    PreparedStatement statement;
    ASSERT_EQ(database.TakeStatement(Format(L"select {};", number), statement), SQLITE_OK);
    database.KeepStatement(std::move(statement));
  }
  std::vector<std::string> kept;
  sqlite3_stmt* statement = nullptr;
  while ((statement = sqlite3_next_stmt(database.GetConnection(), statement)) != nullptr) {
    kept.emplace_back(sqlite3_sql(statement));
  }
  EXPECT_THAT(kept, SizeIs(16));
  EXPECT_THAT(kept, Contains("select 49;"));
  EXPECT_THAT(kept, Contains("select 34;"));
}

TEST_F(SQLiteDatabaseTest, ClosesThoughStatementsAreKept) {
  SQLiteDatabase database;
  database.Open(false, MakeDatabase(L"a.db"));
  PreparedStatement statement;
  ASSERT_EQ(database.TakeStatement(L"select 1;", statement), SQLITE_OK);
  database.KeepStatement(std::move(statement));
  EXPECT_EQ(database.Close(), SQLITE_OK);
}

TEST_F(SQLiteDatabaseTest, KeepsNoStatementOfAnEarlierConnection) {
  const std::wstring path = MakeDatabase(L"a.db");
  SQLiteDatabase database;
  database.Open(false, path);
  sqlite3* const earlier = database.GetConnection();
  PreparedStatement statement;
  ASSERT_EQ(database.TakeStatement(L"select 1;", statement), SQLITE_OK);
  EXPECT_EQ(database.Close(), SQLITE_BUSY);
  database.Open(false, path);
  database.KeepStatement(std::move(statement));
  EXPECT_EQ(sqlite3_close(earlier), SQLITE_OK);
  EXPECT_EQ(sqlite3_next_stmt(database.GetConnection(), nullptr), nullptr);
}

// The library's own log

TEST_F(SQLiteDatabaseTest, LogsThatTheLibraryWasInUseBefore) {
  const SqliteLibraryReset library;
  sqlite3_initialize();
  Trace();
  FakeDatabasePlatform::state.firstInstance = true;
  SQLiteDatabase database;
  EXPECT_EQ(database.Open(true, MakeDatabase(L"a.db")), 0);
  ASSERT_THAT(log_.Messages(), SizeIs(3));
  if (TakesErrorLogInUse()) {
    EXPECT_THAT(log_.Messages()[0].text, StartsWith(L"(21) misuse"));
  } else {
    EXPECT_EQ(
        log_.Messages()[0],
        Database(LogLevel::Error, L"[0x001a2] Can't config database: SQLite_CONFIG_LOG 21 - process C:\\host.exe"));
  }
  EXPECT_EQ(
      log_.Messages()[1],
      Database(LogLevel::Error, L"[0x001a2] Can't config database: SQLITE_CONFIG_SQLLOG 21 - process C:\\host.exe"));
  EXPECT_THAT(log_.Messages()[2].text, HasSubstr(L"Opening database"));
  database.Close();
}

TEST_F(SQLiteDatabaseTest, SaysNothingOfThatUntraced) {
  const SqliteLibraryReset library;
  sqlite3_initialize();
  FakeDatabasePlatform::state.firstInstance = true;
  SQLiteDatabase database;
  EXPECT_EQ(database.Open(true, MakeDatabase(L"a.db")), 0);
  EXPECT_THAT(log_.Messages(), IsEmpty());
  database.Close();
}

TEST_F(SQLiteDatabaseTest, ConfiguresNothingInALaterProcessOrUnasked) {
  sqlite3_initialize();  // configuring now would be seen to fail
  Trace();
  SQLiteDatabase later;
  FakeDatabasePlatform::state.firstInstance = false;
  later.Open(true, MakeDatabase(L"a.db"));
  SQLiteDatabase unasked;
  FakeDatabasePlatform::state.firstInstance = true;
  unasked.Open(false, MakeDatabase(L"b.db"));
  EXPECT_THAT(log_.Messages(), Not(Contains(Field(&LogCapture::Message::text, HasSubstr(L"Can't config")))));
  EXPECT_THAT(log_.Messages(), SizeIs(2));
}

TEST_F(SQLiteDatabaseTest, RoutesTheLibrarysErrorsToTheLog) {
  const SqliteLibraryReset library;
  FakeDatabasePlatform::state.firstInstance = true;
  const auto database = std::make_shared<SQLiteDatabase>();
  ASSERT_EQ(database->Open(true, MakeDatabase(L"a.db")), 0);
  SQLContext context;
  context.Prepare(database, L"select 1 from Missing;");
  EXPECT_THAT(log_.Messages(), IsEmpty()) << "untraced";

  Trace();
  context.Prepare(database, L"select 1 from Missing;");
  ASSERT_THAT(log_.Messages(), SizeIs(1));
  EXPECT_EQ(log_.Messages()[0].source, LogSource::Database);
  EXPECT_EQ(log_.Messages()[0].level, LogLevel::Error);
  EXPECT_THAT(log_.Messages()[0].text, StartsWith(L"(1) no such table: Missing"));
  database->Close();
}

TEST_F(SQLiteDatabaseTest, LogsEveryRunOfAKeptStatementAndNothingAtItsEnd) {
  const SqliteLibraryReset library;
  FakeDatabasePlatform::state.firstInstance = true;
  const auto database = std::make_shared<SQLiteDatabase>();
  ASSERT_EQ(database->Open(true, MakeDatabase(L"a.db")), 0);
  if (!HasStatementLog()) GTEST_SKIP() << "the library cannot";
  const auto run = [&](int value) {
    SQLContext context;
    context.Prepare(database, L"select @Value;");
    sqlite3_bind_int(context.Get(), 1, value);
    context.Step();
  };
  run(6);
  EXPECT_THAT(log_.Messages(), IsEmpty()) << "not traced";
  Trace();
  run(7);
  run(8);
  EXPECT_THAT(log_.Messages(), ElementsAre(Database(LogLevel::Detail, L"select 7; (suffix 0)"),
                                           Database(LogLevel::Detail, L"select 8; (suffix 0)")));
  FakeDatabasePlatform::state.tracing = false;
  database->Close();
  EXPECT_THAT(log_.Messages(), SizeIs(2));
}

TEST_F(SQLiteDatabaseTest, RoutesStatementsToTheLogWhereTheLibraryCan) {
  const SqliteLibraryReset library;
  FakeDatabasePlatform::state.firstInstance = true;
  Trace();
  const std::wstring path = MakeDatabase(L"a.db");
  const auto database = std::make_shared<SQLiteDatabase>();
  ASSERT_EQ(database->Open(true, path), 0);
  SQLContext context;
  context.Prepare(database, L"select '\u20ac';");
  context.Step();
  context.Finalize();
  const LogCapture::Message opening =
      Database(LogLevel::Detail, L"[0x001a2] Opening database " + path + L" - process C:\\host.exe");
  if (HasStatementLog()) {
    EXPECT_THAT(log_.Messages(), ElementsAre(opening, Database(LogLevel::Detail, path + L" (suffix 0)"),
                                             Database(LogLevel::Detail, L"select '\u20ac'; (suffix 0)")));
  } else {
    EXPECT_THAT(log_.Messages(),
                ElementsAre(Database(LogLevel::Error,
                                     L"[0x001a2] Can't config database: SQLITE_CONFIG_SQLLOG 1 - process C:\\host.exe"),
                            opening));
  }
  database->Close();
}
