#include "WaylineDll/Store/RecordRows.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <memory>
#include <string>

#include "Database/SQLite/MemberBinding.h"
#include "Database/SQLite/SQLiteHandles.h"

using testing::IsEmpty;

namespace {

// A record with a column of every kind.
class SampleRecord : public SQLRecord {
 public:
  int32_t id = 0;
  int32_t parent = 0;
  std::wstring words;
  wchar_t letter = L'a';
  int32_t small = 0;
  int64_t large = 0;
  bool flag = false;
  std::string bytes;
  uint16_t shortNumber = 0;

  std::span<const ColumnBinding> GetBindings() const override {
    static constexpr ColumnBinding kBindings[] = {
        BindAs<ColumnKind::Key, &SampleRecord::id>(L"Id"),
        BindAs<ColumnKind::ParentKey, &SampleRecord::parent>(L"Parent"),
        Bind<&SampleRecord::words>(L"Words"),
        Bind<&SampleRecord::letter>(L"Letter"),
        Bind<&SampleRecord::small>(L"Small"),
        Bind<&SampleRecord::large>(L"Large"),
        Bind<&SampleRecord::flag>(L"Flag"),
        Bind<&SampleRecord::bytes>(L"Bytes"),
        Bind<&SampleRecord::shortNumber>(L"Short"),
    };
    return kBindings;
  }
};

// All columns of a record.
RecordColumns AllColumns(const SQLRecord& record) {
  return {record, {record.GetBindings().begin(), record.GetBindings().end()}};
}

class RecordRowsTest : public testing::Test {
 protected:
  RecordRowsTest() {
    sqlite3* opened = nullptr;
    sqlite3_open(":memory:", &opened);
    connection_.reset(opened);
    Row("CREATE TABLE T (Id INTEGER PRIMARY KEY, Parent, Words, Letter, Small, Large, Flag, Bytes, Short)");
  }

  // The first row of a statement's result, its columns quoted and joined.
  std::string Row(const std::string& statement) const {
    std::string row;
    const auto take = [](void* target, int, char** values, char**) {
      *static_cast<std::string*>(target) = values[0];
      return 0;
    };
    EXPECT_EQ(sqlite3_exec(connection_.get(), statement.c_str(), take, &row, nullptr), SQLITE_OK);
    return row;
  }

  std::string Stored() const {
    return Row(
        "SELECT Id || ',' || quote(Parent) || ',' || quote(Words) || ',' || quote(Letter) || ',' || "
        "quote(Small) || ',' || quote(Large) || ',' || quote(Flag) || ',' || quote(Bytes) || ',' || "
        "quote(Short) "
        "FROM T ORDER BY Id DESC");
  }

  ConnectionHandle connection_;
};

}  // namespace

TEST_F(RecordRowsTest, StoreEveryKindOfColumn) {
  SampleRecord record;
  record.id = 5;
  record.parent = 3;
  record.words = L"it's \u20ac";
  record.letter = L'm';
  record.small = -7;
  record.large = 5000000000;
  record.flag = true;
  record.bytes = "\xc3\xa9";
  record.shortNumber = 65535;
  ASSERT_EQ(InsertRow(connection_.get(), L"T", AllColumns(record)), SQLITE_OK);
  EXPECT_EQ(Stored(), "5,3,'it''s \xe2\x82\xac','m',-7,5000000000,1,'\xc3\xa9',65535");
}

TEST_F(RecordRowsTest, LeaveColumnsThatAreNotListedNull) {
  SampleRecord record;
  record.id = 5;
  record.small = 1;
  const SampleRecord defaults;
  ASSERT_EQ(InsertRow(connection_.get(), L"T", DifferingColumns(record, defaults)), SQLITE_OK);
  EXPECT_EQ(Stored(), "5,NULL,NULL,NULL,1,NULL,NULL,NULL,NULL");
}

TEST_F(RecordRowsTest, DifferInEveryKindOfColumn) {
  SampleRecord record;
  EXPECT_THAT(DifferingColumns(record, SampleRecord()).columns, IsEmpty());
  record.id = 1;
  record.parent = 1;
  record.words = L" ";
  record.letter = L'b';
  record.small = 1;
  record.large = int64_t{1} << 32;
  record.flag = true;
  record.bytes = "x";
  record.shortNumber = 1;
  EXPECT_EQ(DifferingColumns(record, SampleRecord()).columns.size(), record.GetBindings().size());
}

TEST_F(RecordRowsTest, InsertNeverOverwrites) {
  SampleRecord record;
  record.id = 5;
  ASSERT_EQ(InsertRow(connection_.get(), L"T", AllColumns(record)), SQLITE_OK);
  record.small = 9;
  EXPECT_NE(InsertRow(connection_.get(), L"T", AllColumns(record)), SQLITE_OK);
  EXPECT_EQ(Row("SELECT Small FROM T"), "0");
}

TEST_F(RecordRowsTest, UpdatePinsOnlyWhereThereIsNoValue) {
  SampleRecord record;
  record.id = 5;
  record.small = 1;
  ASSERT_EQ(InsertRow(connection_.get(), L"T", DifferingColumns(record, SampleRecord())), SQLITE_OK);
  record.small = 2;
  record.large = 3;
  record.flag = true;
  const auto columns = record.GetBindings();
  const RecordColumns keys = {record, {columns[0]}};
  ASSERT_EQ(UpdateRow(connection_.get(), L"T", {record, {columns[6]}}, {record, {columns[4], columns[5]}}, keys),
            SQLITE_OK);
  EXPECT_EQ(Stored(), "5,NULL,NULL,NULL,1,3,1,NULL,NULL");
}

TEST_F(RecordRowsTest, UpdateAndDeleteOnlyWhereAllKeysMatch) {
  SampleRecord record;
  for (record.id = 1; record.id <= 3; ++record.id) {
    record.parent = record.id % 2;
    ASSERT_EQ(InsertRow(connection_.get(), L"T", AllColumns(record)), SQLITE_OK);
  }
  record.id = 1;
  record.parent = 1;
  record.small = 8;
  const auto columns = record.GetBindings();
  const RecordColumns keys = {record, {columns[0], columns[1]}};
  EXPECT_EQ(UpdateRow(connection_.get(), L"T", {record, {columns[4]}}, {record, {}}, keys), SQLITE_OK);
  EXPECT_EQ(Row("SELECT group_concat(Small) FROM T"), "8,0,0");
  EXPECT_EQ(DeleteRow(connection_.get(), L"T", keys), SQLITE_OK);
  EXPECT_EQ(Row("SELECT group_concat(Id) FROM T"), "2,3");
}
