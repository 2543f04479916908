#include "Database/SQLite/SQLite.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <iterator>

#include "Database/SQLite/SQLiteHandles.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/Database/SQLite/EveryKind.h"
#include "tests/support/FakeDatabasePlatform.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TemporaryFolder.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

namespace {

using Sample = EveryKind;

// A record whose columns the test binds.
struct BoundByTest : SQLRecord {
  explicit BoundByTest(std::vector<ColumnBinding> columns) : bindings(std::move(columns)) {}
  std::span<const ColumnBinding> GetBindings() const override { return bindings; }

  int32_t first = -1;
  int32_t second = -1;
  int32_t third = -1;
  std::vector<ColumnBinding> bindings;
};

constexpr wchar_t kCondition[] = L"where Id = @Id";

class SQLiteTest : public testing::Test {
 protected:
  SQLiteTest() {
    sqlite3* created = nullptr;
    sqlite3_open(ToUtf8(folder_.File(L"Test.db")).c_str(), &created);
    sqlite3_exec(created, "create table Samples (Id, Parent, Name, Letter, Number, Big, Flag, Bytes, Small)", nullptr,
                 nullptr, nullptr);
    sqlite3_close(created);
    EXPECT_EQ(sqlite_.Open(folder_.Path().wstring(), L"Test.db"), SQLITE_OK);
  }
  ~SQLiteTest() override { sqlite_.GetDatabase()->Close(); }

  void Run(const char* statement) {
    char* error = nullptr;
    sqlite3_exec(sqlite_.GetDatabase()->GetConnection(), statement, nullptr, nullptr, &error);
    EXPECT_EQ(error, nullptr) << error;
  }

  // Nobody else can read as long as the result lives.
  ConnectionHandle Lock() const {
    sqlite3* other = nullptr;
    sqlite3_open(ToUtf8(folder_.File(L"Test.db")).c_str(), &other);
    EXPECT_EQ(sqlite3_exec(other, "begin exclusive", nullptr, nullptr, nullptr), SQLITE_OK);
    return ConnectionHandle(other);
  }

  // The record after reading a row in which the column of `kind` holds an SQL expression and most others
  // NULL.
  Sample Read(ColumnKind kind, const char* expression) {
    Run("delete from Samples");
    std::string row = "1, 0";
    for (const ColumnKind column :
         {ColumnKind::Text, ColumnKind::Character, ColumnKind::Integer32, ColumnKind::Integer64, ColumnKind::Boolean,
          ColumnKind::NarrowText, ColumnKind::Integer16}) {
      row += column == kind ? std::string(", ") + expression : ", NULL";
    }
    Run(("insert into Samples values (" + row + ")").c_str());
    Sample sample;
    EXPECT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 1, sample), SQLITE_DONE);
    return sample;
  }

  // Bounds the work of the statements that follow: the walk over parents has no bound of its own.
  void InterruptAfter(int steps) {
    static int remaining;
    remaining = steps;
    sqlite3_progress_handler(
        sqlite_.GetDatabase()->GetConnection(), 1, [](void*) { return remaining-- > 0 ? 0 : 1; }, nullptr);
  }

  // What was logged since the last call.
  std::vector<LogCapture::Message> NewMessages() {
    const auto& all = log_.Messages();
    std::vector<LogCapture::Message> added(all.begin() + seen_, all.end());
    seen_ += std::ssize(added);
    return added;
  }

  LogCapture log_;
  ptrdiff_t seen_ = 0;
  FakeDatabasePlatform platform_;
  TemporaryFolder folder_;
  SQLite sqlite_;
  std::vector<uint32_t> list_ = {77};
};

LogCapture::Message Error(LogSource source, const std::wstring& text) { return {source, LogLevel::Error, text}; }

}  // namespace

// Opening

TEST_F(SQLiteTest, OpensTheFileThatIsNamed) {
  EXPECT_EQ(sqlite_.GetPath(), folder_.File(L"Test.db"));
  EXPECT_EQ(sqlite_.GetDatabase()->GetPath(), folder_.File(L"Test.db"));
}

TEST_F(SQLiteTest, SharesTheDatabaseWithOthersThatOpenIt) {
  SQLite other;
  EXPECT_EQ(other.Open(folder_.Path().wstring(), L"Test.db"), SQLITE_OK);
  EXPECT_EQ(other.GetDatabase(), sqlite_.GetDatabase());
}

TEST_F(SQLiteTest, OpensTheDefaultDatabaseWithoutArguments) {
  FakeDatabasePlatform::state.userDataDirectory = folder_.Path().wstring();
  SQLite other;
  EXPECT_EQ(other.Open(), SQLITE_CANTOPEN);
  EXPECT_EQ(other.GetPath(), folder_.File(L"Wayline.db"));
}

// Executing

TEST_F(SQLiteTest, ExecutesUpToTheFirstRow) {
  SQLContext context;
  EXPECT_EQ(sqlite_.Execute(context, L"select 5;", {}), SQLITE_ROW);
  EXPECT_EQ(sqlite3_column_int(context.Get(), 0), 5);
  EXPECT_EQ(sqlite_.Execute(context, L"select Id from Samples;", {}), SQLITE_DONE);
}

TEST_F(SQLiteTest, TakesOverItsArguments) {
  SQLContext context;
  std::wstring statement = L"select @a;";
  std::vector<int32_t> values = {7};
  EXPECT_EQ(sqlite_.Execute(context, std::move(statement), std::move(values)), SQLITE_ROW);
  EXPECT_TRUE(statement.empty());  // NOLINT(bugprone-use-after-move): part of the contract
  EXPECT_TRUE(values.empty());     // NOLINT(bugprone-use-after-move)
}

TEST_F(SQLiteTest, BindsByPositionWhateverTheNames) {
  SQLContext context;
  ASSERT_EQ(sqlite_.Execute(context, L"select @z, @a, ?;", {1, -2, 3}), SQLITE_ROW);
  EXPECT_EQ(sqlite3_column_int(context.Get(), 0), 1);
  EXPECT_EQ(sqlite3_column_int(context.Get(), 1), -2);
  EXPECT_EQ(sqlite3_column_int(context.Get(), 2), 3);
}

TEST_F(SQLiteTest, ReturnsThePrepareErrorUnlogged) {
  SQLContext context;
  EXPECT_EQ(sqlite_.Execute(context, L"select Missing from Samples;", {}), SQLITE_ERROR);
  EXPECT_EQ(context.Get(), nullptr);
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(SQLiteTest, ReturnsTheBindErrorAndKeepsTheStatement) {
  SQLContext context;
  EXPECT_EQ(sqlite_.Execute(context, L"select @a;", {1, 2}), SQLITE_RANGE);
  EXPECT_NE(context.Get(), nullptr);
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST(SQLite, CannotExecuteBeforeItIsOpened) {
  SQLite sqlite;
  SQLContext context;
  EXPECT_EQ(sqlite.Execute(context, L"select 1;", {}), SQLITE_MISUSE);
}

// Reading columns

TEST_F(SQLiteTest, ReadsTextWhole) {
  EXPECT_EQ(Read(ColumnKind::Text, "'gr\xc3\xbc\xc3\x9f \xf0\x9f\x92\xa1 '").name, L"gr\u00fc\u00df \U0001F4A1 ");
  EXPECT_EQ(Read(ColumnKind::Text, "12.5").name, L"12.5");
}

TEST_F(SQLiteTest, ReadsTheFirstUnitAsCharacter) {
  EXPECT_EQ(Read(ColumnKind::Character, "'manual'").letter, L'm');
  EXPECT_EQ(Read(ColumnKind::Character, "5").letter, L'5');
  EXPECT_EQ(static_cast<uint32_t>(Read(ColumnKind::Character, "'\xf0\x9f\x92\xa1'").letter), 0xD83Du);
  EXPECT_EQ(Read(ColumnKind::Character, "''").letter, L'\0');
}

TEST_F(SQLiteTest, TruncatesNumbersTo32Bits) {
  EXPECT_EQ(Read(ColumnKind::Integer32, "-28800").number, -28800);
  EXPECT_EQ(Read(ColumnKind::Integer32, "' 12 apples'").number, 12);
  EXPECT_EQ(Read(ColumnKind::Integer32, "4294967298").number, 2);
  EXPECT_EQ(Read(ColumnKind::Integer32, "'abc'").number, 0);
}

TEST_F(SQLiteTest, Reads64BitNumbersWhole) {
  EXPECT_EQ(Read(ColumnKind::Integer64, "4294967298").big, 4294967298);
  EXPECT_EQ(Read(ColumnKind::Integer64, "-9223372036854775808").big, INT64_MIN);
}

TEST_F(SQLiteTest, TakesEveryNonzeroNumberAsTrue) {
  EXPECT_TRUE(Read(ColumnKind::Boolean, "'2'").flag);
  EXPECT_TRUE(Read(ColumnKind::Boolean, "-1").flag);
  EXPECT_TRUE(Read(ColumnKind::Boolean, "4294967296").flag) << "out of range for 32 bits, and not truncated";
  EXPECT_FALSE(Read(ColumnKind::Boolean, "'0'").flag);
  EXPECT_FALSE(Read(ColumnKind::Boolean, "'abc'").flag);
  EXPECT_FALSE(Read(ColumnKind::Boolean, "'true'").flag);
}

TEST_F(SQLiteTest, CopiesTheBytesOfNarrowText) {
  EXPECT_EQ(Read(ColumnKind::NarrowText, "'gr\xc3\xbc\xc3\x9f'").bytes, "gr\xc3\xbc\xc3\x9f");
  EXPECT_EQ(Read(ColumnKind::NarrowText, "''").bytes, "");
}

TEST_F(SQLiteTest, TruncatesNumbersTo16Bits) {
  EXPECT_EQ(Read(ColumnKind::Integer16, "70000").small, 4464);
  EXPECT_EQ(Read(ColumnKind::Integer16, "65535").small, 65535);
}

TEST_F(SQLiteTest, LeavesTheMembersOfNullColumns) {
  const Sample sample = Read(ColumnKind::Key, "NULL");
  EXPECT_EQ(sample.id, 1);
  EXPECT_EQ(sample.parent, 0);
  EXPECT_EQ(sample.name, L"unset");
  EXPECT_EQ(sample.letter, L'?');
  EXPECT_EQ(sample.number, -1);
  EXPECT_EQ(sample.big, -1);
  EXPECT_TRUE(sample.flag);
  EXPECT_EQ(sample.bytes, "unset");
  EXPECT_EQ(sample.small, 99);
}

TEST_F(SQLiteTest, ReportsAnUnknownKindAndReadsOnOneColumnEarlier) {
  for (const bool tracing : {false, true}) {
    FakeDatabasePlatform::state.tracing = tracing;
    BoundByTest unknown(
        {Bind<&BoundByTest::first>(L"a"), Bind<&BoundByTest::second>(L"b"), Bind<&BoundByTest::third>(L"c")});
    unknown.bindings[1].kind = ColumnKind{10};
    SQLContext context;
    ASSERT_EQ(sqlite_.Execute(context, L"select 1, 2, 3 where 7 = @Id;", {7}), SQLITE_ROW);
    sqlite_.ReadData(context, &unknown);
    EXPECT_EQ(unknown.first, 1);
    EXPECT_EQ(unknown.second, -1);
    EXPECT_EQ(unknown.third, 2);

    const auto messages = NewMessages();
    ASSERT_THAT(messages, SizeIs(tracing ? 2 : 1));
    const std::wstring& line = messages.back().text;
    EXPECT_THAT(line, AllOf(StartsWith(L"SQLite: "), HasSubstr(L"SQLite::ReadData("),
                            EndsWith(L" Error: Error unknown data type - select 1, 2, 3 where 7 = 7;")));
    EXPECT_EQ(messages.front(), Error(tracing ? LogSource::Database : LogSource::General, line));
    EXPECT_EQ(messages.back(), Error(LogSource::General, line));
  }
}

// The chain of parents

TEST_F(SQLiteTest, ListsTheChainFromTheRecordToTheRoot) {
  Run("insert into Samples (Id, Parent) values (1, 0), (2, 1), (3, 2), (4, 1)");
  EXPECT_EQ(sqlite_.GetHierarchicalList(L"Samples", Sample(), 3, list_), SQLITE_DONE);
  EXPECT_THAT(list_, ElementsAre(3, 2, 1));
}

TEST_F(SQLiteTest, ListsARecordWithoutParentAlone) {
  Run("insert into Samples (Id, Parent) values (1, 0)");
  EXPECT_EQ(sqlite_.GetHierarchicalList(L"Samples", Sample(), 1, list_), SQLITE_DONE);
  EXPECT_THAT(list_, ElementsAre(1));
}

TEST_F(SQLiteTest, ListsNothingForAMissingRecord) {
  EXPECT_EQ(sqlite_.GetHierarchicalList(L"Samples", Sample(), 5, list_), SQLITE_DONE);
  EXPECT_THAT(list_, IsEmpty());
}

TEST_F(SQLiteTest, WalksACircleOfParentsWithoutEnd) {
  Run("insert into Samples (Id, Parent) values (1, 2), (2, 1)");
  InterruptAfter(10000);
  EXPECT_EQ(sqlite_.GetHierarchicalList(L"Samples", Sample(), 1, list_), SQLITE_INTERRUPT);
  EXPECT_GT(list_.size(), 100u);
}

TEST_F(SQLiteTest, AsksForAMissingParentWithoutEnd) {
  Run("insert into Samples (Id, Parent) values (1, 9)");
  InterruptAfter(10000);
  EXPECT_EQ(sqlite_.GetHierarchicalList(L"Samples", Sample(), 1, list_), SQLITE_INTERRUPT);
  EXPECT_THAT(list_, ElementsAre(1));
}

TEST_F(SQLiteTest, ReportsARecordTypeWithoutParentColumn) {
  Run("select * from Samples");  // else SQLite's complaint is that it has not read the schema
  const BoundByTest record({BindAs<ColumnKind::Key, &BoundByTest::first>(L"Id")});
  EXPECT_EQ(sqlite_.GetHierarchicalList(L"Samples", record, 7, list_), SQLITE_ERROR);
  ASSERT_THAT(log_.Messages(), SizeIs(1));
  EXPECT_THAT(log_.Messages()[0].text,
              AllOf(HasSubstr(L"SQLite::GetHierarchicalList("),
                    EndsWith(L" Error: 1 - SQL logic error - select Id, Samples where Id = 7;")));
}

TEST_F(SQLiteTest, AsksForTheLastKeyBeforeTheParent) {
  const BoundByTest record({BindAs<ColumnKind::Key, &BoundByTest::first>(L"First"),
                            BindAs<ColumnKind::Key, &BoundByTest::first>(L"Second"),
                            BindAs<ColumnKind::ParentKey, &BoundByTest::second>(L"Parent"),
                            BindAs<ColumnKind::Key, &BoundByTest::third>(L"Third")});
  EXPECT_EQ(sqlite_.GetHierarchicalList(L"Samples", record, 7, list_), SQLITE_ERROR);
  ASSERT_THAT(log_.Messages(), SizeIs(1));
  EXPECT_THAT(log_.Messages()[0].text, EndsWith(L" - select First, Second, Parent from Samples where Second = 7;"));
}

// Hierarchical load

TEST_F(SQLiteTest, TakesEachColumnFromTheNearestRecordThatStoresIt) {
  Run("insert into Samples values (1, 0, 'root', 'r', 10, 100, 1, 'root', 1000),"
      "(2, 1, 'parent', NULL, 20, NULL, 0, NULL, NULL), (3, 2, NULL, NULL, 30, NULL, NULL, 'leaf', NULL)");
  Sample sample;
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 3, sample), SQLITE_DONE);
  EXPECT_EQ(sample.id, 3);
  EXPECT_EQ(sample.parent, 2);
  EXPECT_EQ(sample.name, L"parent");
  EXPECT_EQ(sample.letter, L'r');
  EXPECT_EQ(sample.number, 30);
  EXPECT_EQ(sample.big, 100);
  EXPECT_FALSE(sample.flag);
  EXPECT_EQ(sample.bytes, "leaf");
  EXPECT_EQ(sample.small, 1000);
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(SQLiteTest, LetsAnEmptyStringOverrideTheParent) {
  Run("insert into Samples (Id, Parent, Name, Bytes) values (1, 0, 'root', 'root'), (2, 1, '', NULL)");
  Sample sample;
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 2, sample), SQLITE_DONE);
  EXPECT_EQ(sample.name, L"");
  EXPECT_EQ(sample.bytes, "root");
}

TEST_F(SQLiteTest, LeavesTheRecordForAMissingId) {
  Sample sample;
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 5, sample), SQLITE_DONE);
  EXPECT_EQ(sample.id, -1);
  EXPECT_EQ(sample.name, L"unset");
}

TEST_F(SQLiteTest, ReportsAFailedStepWithTheParameterFilledIn) {
  // Loads fail in the step because of the last column; what the root stored has been applied by then.
  Run("create table Profiles (ProfileId, LinkProfile, Amount)");
  Run("insert into Profiles values (1, 0, 5), (7, 1, -9223372036854775808)");
  for (const bool tracing : {false, true}) {
    FakeDatabasePlatform::state.tracing = tracing;
    BoundByTest record({BindAs<ColumnKind::Key, &BoundByTest::first>(L"ProfileId"),
                        BindAs<ColumnKind::ParentKey, &BoundByTest::second>(L"LinkProfile"),
                        Bind<&BoundByTest::third>(L"abs(Amount)")});
    EXPECT_EQ(sqlite_.LoadHierarchical(L"Profiles", L"where ProfileId = @ProfileId", 7, record), SQLITE_ERROR);
    EXPECT_EQ(record.first, 1);
    EXPECT_EQ(record.second, 0);
    EXPECT_EQ(record.third, 5);

    const auto messages = NewMessages();
    ASSERT_THAT(messages, SizeIs(tracing ? 3 : 2));
    const std::wstring& line = messages.front().text;
    EXPECT_THAT(line, AllOf(StartsWith(L"SQLite: "), HasSubstr(L"SQLite::LoadHierarchical("),
                            EndsWith(L" Error: 1 - SQL logic error - select ProfileId, LinkProfile, abs(Amount) "
                                     L"from Profiles where ProfileId = 7;")));
    EXPECT_EQ(messages.front(), Error(tracing ? LogSource::Database : LogSource::General, line));
    EXPECT_EQ(messages[tracing ? 1 : 0], Error(LogSource::General, line));
    EXPECT_EQ(messages.back(),
              (LogCapture::Message{LogSource::General, LogLevel::Info, L"Can't cleanup context: out of memory"}));
  }
}

TEST_F(SQLiteTest, ReturnsTheFailureOfTheListQuery) {
  Sample sample;
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Missing", kCondition, 1, sample), SQLITE_ERROR);
  ASSERT_THAT(log_.Messages(), SizeIs(1));
  EXPECT_THAT(log_.Messages()[0].text, HasSubstr(L"SQLite::GetHierarchicalList("));
}

TEST_F(SQLiteTest, HoldsNoStatementAfterALoad) {
  Run("insert into Samples (Id, Parent) values (1, 0), (2, 1)");
  Sample sample;
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 2, sample), SQLITE_DONE);
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Samples", L"where Missing = @Id", 2, sample), SQLITE_ERROR);
  EXPECT_EQ(sqlite_.GetDatabase()->Close(), SQLITE_OK);
}

TEST_F(SQLiteTest, CompilesTheStatementsOfALoadOnce) {
  Run("insert into Samples (Id, Parent) values (1, 0), (2, 1), (3, 2)");
  int compiled = 0;
  sqlite3_set_authorizer(
      sqlite_.GetDatabase()->GetConnection(),
      [](void* count, int action, const char*, const char*, const char*, const char*) {
        if (action == SQLITE_SELECT) ++*static_cast<int*>(count);
        return SQLITE_OK;
      },
      &compiled);
  Sample sample;
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 3, sample), SQLITE_DONE);
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 2, sample), SQLITE_DONE);
  EXPECT_EQ(compiled, 2);
}

TEST_F(SQLiteTest, FollowsATableThatChangesBetweenLoads) {
  Run("insert into Samples (Id, Parent, Name) values (1, 0, 'before')");
  Sample sample;
  ASSERT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 1, sample), SQLITE_DONE);
  Run("alter table Samples rename to Former");
  Run("create table Samples (Small, Bytes, Flag, Big, Number, Letter, Name, Parent, Id)");
  Run("insert into Samples (Id, Parent, Name) values (1, 0, 'after')");
  ASSERT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 1, sample), SQLITE_DONE);
  EXPECT_EQ(sample.name, L"after");
  EXPECT_EQ(sample.id, 1);
}

TEST_F(SQLiteTest, ReportsATableThatIsGoneBetweenLoadsAsIfItNeverWas) {
  Run("insert into Samples (Id, Parent) values (1, 0)");
  Sample sample;
  ASSERT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 1, sample), SQLITE_DONE);
  Run("drop table Samples");
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 1, sample), SQLITE_ERROR);
  ASSERT_THAT(log_.Messages(), SizeIs(1));
  EXPECT_THAT(log_.Messages()[0].text,
              EndsWith(L" Error: 1 - SQL logic error - select Id, Parent from Samples where Id = 1;"));
}

TEST_F(SQLiteTest, CleansUpAfterAKeptStatementThatFails) {
  Run("insert into Samples (Id, Parent) values (1, 0)");
  Sample sample;
  ASSERT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 1, sample), SQLITE_DONE);
  const ConnectionHandle other = Lock();
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 1, sample), SQLITE_BUSY);
  ASSERT_THAT(log_.Messages(), SizeIs(2));
  EXPECT_THAT(log_.Messages()[0].text, HasSubstr(L" Error: 5 - database is locked - "));
  EXPECT_EQ(log_.Messages()[1].text, L"Can't cleanup context: out of memory");
}

TEST_F(SQLiteTest, LeavesNoTransactionBehind) {
  Run("insert into Samples (Id, Parent) values (1, 0)");
  sqlite3* const connection = sqlite_.GetDatabase()->GetConnection();
  Sample sample;
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 1, sample), SQLITE_DONE);
  EXPECT_NE(sqlite3_get_autocommit(connection), 0);
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Missing", kCondition, 1, sample), SQLITE_ERROR);
  EXPECT_NE(sqlite3_get_autocommit(connection), 0);
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Samples", L"where abs(-9223372036854775808) = @Id", 1, sample), SQLITE_ERROR);
  EXPECT_NE(sqlite3_get_autocommit(connection), 0);
  const ConnectionHandle other = Lock();
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 1, sample), SQLITE_BUSY);
  EXPECT_NE(sqlite3_get_autocommit(connection), 0);
}

TEST_F(SQLiteTest, ReportsAConditionWithoutParameter) {
  Run("insert into Samples (Id, Parent) values (1, 0)");
  Sample sample;
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Samples", L"where Id = 1", 1, sample), SQLITE_RANGE);
  ASSERT_THAT(log_.Messages(), SizeIs(1));
  EXPECT_THAT(log_.Messages()[0].text, AllOf(HasSubstr(L"SQLite::LoadHierarchical("),
                                             HasSubstr(L" Error: 25 - column index out of range - select "),
                                             EndsWith(L" from Samples where Id = 1;")));
}

TEST_F(SQLiteTest, BindsIdsBeyond31BitsAsNegative) {
  Run("insert into Samples (Id, Parent, Name) values (-1, 0, 'last')");
  Sample sample;
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 4294967295, sample), SQLITE_DONE);
  EXPECT_EQ(sample.name, L"last");
  EXPECT_EQ(sqlite_.LoadHierarchical(L"Missing", kCondition, 4294967295, sample), SQLITE_ERROR);
  EXPECT_THAT(log_.Messages().back().text, EndsWith(L" from Missing where Id = -1;"));
}

// What another program writes while a load is under way.
class WritingDuringALoad {
 public:
  WritingDuringALoad(sqlite3* connection, const std::wstring& file) : connection_(connection) {
    sqlite3* opened = nullptr;
    sqlite3_open(ToUtf8(file).c_str(), &opened);
    writer_.reset(opened);
    sqlite3_trace_v2(
        connection_, SQLITE_TRACE_STMT,
        [](unsigned, void* self, void*, void* text) {
          static_cast<WritingDuringALoad*>(self)->OnStatement(static_cast<const char*>(text));
          return 0;
        },
        this);
  }
  ~WritingDuringALoad() { sqlite3_trace_v2(connection_, 0, nullptr, nullptr); }
  WritingDuringALoad(const WritingDuringALoad&) = delete;
  WritingDuringALoad& operator=(const WritingDuringALoad&) = delete;

  bool HasWritten() const { return written_; }

 private:
  // The first statement that reads values follows those that read the chain.
  void OnStatement(std::string_view text) {
    if (written_ || text.find("Name") == text.npos) return;
    written_ = sqlite3_exec(writer_.get(), "update Samples set Name = 'new', Number = 2", nullptr, nullptr, nullptr) ==
               SQLITE_OK;
  }

  sqlite3* connection_;
  ConnectionHandle writer_;
  bool written_ = false;
};

TEST_F(SQLiteTest, LoadsOneStateThoughAnotherProgramWrites) {
  Run("pragma journal_mode = wal");
  Run("insert into Samples (Id, Parent, Name, Number) values (1, 0, 'old', 1), (2, 1, NULL, 1)");
  Sample sample;
  {
    const WritingDuringALoad other(sqlite_.GetDatabase()->GetConnection(), folder_.File(L"Test.db"));
    ASSERT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 2, sample), SQLITE_DONE);
    ASSERT_TRUE(other.HasWritten());
  }
  EXPECT_EQ(sample.name, L"old");
  EXPECT_EQ(sample.number, 1);
  ASSERT_EQ(sqlite_.LoadHierarchical(L"Samples", kCondition, 2, sample), SQLITE_DONE);
  EXPECT_EQ(sample.name, L"new");
  EXPECT_EQ(sample.number, 2);
}

// The error line

TEST_F(SQLiteTest, ReportsNothingForSuccess) {
  FakeDatabasePlatform::state.tracing = true;
  sqlite_.ReportError(SQLITE_OK);
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(SQLiteTest, NamesTheOperationThatReports) {
  const auto here = std::source_location::current();
  SQLContext context;
  ASSERT_EQ(sqlite_.Execute(context, L"select 1;", {}), SQLITE_ROW);
  sqlite_.ReportError(SQLITE_BUSY);
  EXPECT_THAT(log_.Messages(),
              ElementsAre(Error(LogSource::General, L"SQLite: " + FromUtf8(here.function_name()) +
                                                        L" Error: 5 - database is locked - select 1;")));
}

TEST_F(SQLiteTest, FillsParametersInOrderAndEachOnce) {
  const auto printed = [this](std::wstring statement, std::vector<int32_t> values) {
    SQLContext context;
    sqlite_.Execute(context, std::move(statement), std::move(values));
    sqlite_.ReportError(SQLITE_BUSY);
    const std::wstring& line = log_.Messages().back().text;
    return line.substr(line.rfind(L" - ") + 3);
  };
  EXPECT_EQ(printed(L"select (@a), @b,@c;", {1, -2, 3}), L"select (1), -2,3;");
  EXPECT_EQ(printed(L"select @a", {1}), L"select 1");
  EXPECT_EQ(printed(L"select @a, @b;", {1}), L"select 1, @b;");
  EXPECT_EQ(printed(L"select @a;", {1, 2}), L"select 1;");
  EXPECT_EQ(printed(L"select @a, @a;", {1, 2}), L"select 1, 2;");
  EXPECT_EQ(printed(L"select @ab, @a;", {1, 2}), L"select 1, 2;");
  EXPECT_EQ(printed(L"select 1;", {}), L"select 1;");
}
