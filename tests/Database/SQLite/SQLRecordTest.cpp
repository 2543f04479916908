#include "Database/SQLite/SQLRecord.h"

#include <gtest/gtest.h>

namespace {

class Record : public SQLRecord {
 public:
  std::span<const ColumnBinding> GetBindings() const override { return {}; }
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
