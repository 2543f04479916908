#include "Database/SQLite/SQLRecord.h"

#include <gtest/gtest.h>

namespace {

class Record : public SQLRecord {
 public:
  Record() {
    Bind(L"Id", ColumnKind::Key, &id, 1);
    Bind(L"Name", ColumnKind::Text, &name);
  }
  int32_t id = 0;
  std::wstring name;
};

ChangeState StateAfter(std::initializer_list<ChangeState> states) {
  Record record;
  for (const ChangeState state : states) record.SetState(state);
  return record.GetState();
}

}  // namespace

TEST(RecordState, TakesTheFirstChange) {
  EXPECT_EQ(StateAfter({}), ChangeState::Unchanged);
  EXPECT_EQ(StateAfter({ChangeState::Changed}), ChangeState::Changed);
}

TEST(RecordState, KeepsTheFirstChange) {
  EXPECT_EQ(StateAfter({ChangeState::Renamed, ChangeState::Changed}), ChangeState::Renamed);
  EXPECT_EQ(StateAfter({ChangeState::New, ChangeState::Renamed}), ChangeState::New);
  EXPECT_EQ(StateAfter({ChangeState::Changed, ChangeState::Unchanged}), ChangeState::Changed);
}

TEST(RecordState, LetsARemovalOverrideEveryChange) {
  EXPECT_EQ(StateAfter({ChangeState::Renamed, ChangeState::Changed, ChangeState::Removed}), ChangeState::Removed);
  EXPECT_EQ(StateAfter({ChangeState::Changed, ChangeState::Removed}), ChangeState::Removed);
  EXPECT_EQ(StateAfter({ChangeState::Removed, ChangeState::Changed}), ChangeState::Removed);
}

TEST(RecordBindings, KeepTheOrderOfBinding) {
  Record record;
  ASSERT_EQ(record.GetBindings().size(), 2u);
  const ColumnBinding& first = record.GetBindings()[0];
  EXPECT_EQ(first.name, L"Id");
  EXPECT_EQ(first.kind, ColumnKind::Key);
  EXPECT_EQ(first.member, &record.id);
  EXPECT_EQ(first.marker, 1u);
  EXPECT_EQ(record.GetBindings()[1].name, L"Name");
  EXPECT_EQ(record.GetBindings()[1].marker, 0u);
}
