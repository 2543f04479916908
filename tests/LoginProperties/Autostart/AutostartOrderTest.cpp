#include "LoginProperties/Autostart/AutostartOrder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <set>
#include <string>

#include "tests/support/LogCapture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr uint16_t kHighest = 65535;

std::shared_ptr<AutoStartItem> Record(int32_t id, AutoStartRecordType type, uint16_t phase, uint16_t order) {
  auto record = std::make_shared<AutoStartItem>();
  record->fields.id = id;
  record->fields.recordType = type;
  record->fields.phase = phase;
  record->fields.order = order;
  return record;
}

// A table of records that tests describe by phase and order; entries have the ids from 1 on, headers from 101 on.
class Table {
 public:
  Table& Header(uint16_t phase) {
    return Add(Record(101 + static_cast<int32_t>(records_.size()), AutoStartRecordType::PhaseHeader, phase, 0));
  }
  Table& Entry(uint16_t phase, uint16_t order) {
    return Add(Record(++entries_, AutoStartRecordType::Program, phase, order));
  }
  Table& Add(const std::shared_ptr<AutoStartItem>& record) {
    records_[static_cast<uint32_t>(record->fields.id)] = record;
    return *this;
  }

  AutoStartItem& At(uint32_t id) { return *records_.at(id); }
  AutostartList List() const { return InOrder(records_); }

  // Moves an entry by its id.
  void Up(uint32_t id) const { MoveUp(List(), Place(id)); }
  void Down(uint32_t id) const { MoveDown(List(), Place(id)); }
  size_t Place(uint32_t id) const {
    const AutostartList list = List();
    return static_cast<size_t>(std::ranges::find(list, records_.at(id)) - list.begin());
  }

  // "phase: ids in order" of each group, with the orders.
  std::string Text() const {
    std::string text;
    for (const auto& record : List()) {
      const AutoStartItem::Fields& fields = record->fields;
      if (IsEntry(*record)) {
        text += " " + std::to_string(fields.id) + "@" + std::to_string(fields.order);
      } else {
        text += (text.empty() ? "" : " ") + std::to_string(fields.phase) + ":";
      }
    }
    return text;
  }

  // Ids of the records that are marked as changed.
  std::set<int32_t> Marked() const {
    std::set<int32_t> ids;
    for (const auto& [id, record] : records_) {
      if (record->GetState() == ChangeState::Changed) ids.insert(record->fields.id);
    }
    return ids;
  }

 private:
  AutoStartTable records_;
  int32_t entries_ = 0;
};

}  // namespace

TEST(AutostartOrder, IsThatOfPhasesAndInThemOfOrders) {
  Table table;
  table.Entry(700, 2).Entry(300, 9).Entry(700, 1).Header(700).Header(300).Entry(300, 10);
  EXPECT_EQ(table.Text(), "300: 2@9 4@10 700: 3@1 1@2");
}

TEST(AutostartOrder, AmongEqualRecordsIsThatOfTheirIds) {
  Table table;
  table.Header(300).Entry(300, 1).Entry(300, 1).Entry(300, 0).Entry(300, 1);
  EXPECT_EQ(table.Text(), " 3@0 300: 1@1 2@1 4@1");
}

TEST(AutostartOrder, PutsThePhaseAboveTheOrder) {
  EXPECT_EQ(SortKey(*Record(1, AutoStartRecordType::Program, 300, 1)), 300u * 65536 + 1);
  EXPECT_EQ(SortKey(*Record(1, AutoStartRecordType::Program, kHighest, kHighest)), 0xFFFFFFFFu);
}

TEST(AutostartOrder, LeavesOutWhatIsRemovedOrNotThere) {
  AutoStartTable records;
  records[1] = nullptr;
  records[2] = Record(2, AutoStartRecordType::Program, 300, 1);
  records[3] = Record(3, AutoStartRecordType::Program, 300, 2);
  records[3]->SetState(ChangeState::Removed);
  records[4] = Record(4, AutoStartRecordType::Program, 300, 3);
  records[4]->SetState(ChangeState::New);
  EXPECT_THAT(InOrder(records), ElementsAre(records[2], records[4]));
}

TEST(AutostartOrder, LogsAndLeavesOutRecordsOfUnknownTypes) {
  const LogCapture log;
  AutoStartTable records;
  records[1] = Record(1, static_cast<AutoStartRecordType>(7), 300, 1);
  records[2] = Record(2, static_cast<AutoStartRecordType>(-1), 300, 1);
  EXPECT_THAT(InOrder(records), IsEmpty());
  EXPECT_THAT(
      log.Messages(),
      ElementsAre(LogCapture::Message{LogSource::General, LogLevel::Trace, L"Unknown autostart record type 7"},
                  LogCapture::Message{LogSource::General, LogLevel::Trace, L"Unknown autostart record type -1"}));
}

// Which moves there are

TEST(AutostartMoves, TheFirstEntryOfTheFirstPhaseCannotGoUp) {
  Table table;
  table.Header(300).Entry(300, 1).Entry(300, 2).Header(700).Entry(700, 1);
  EXPECT_FALSE(CanMoveUp(table.List(), table.Place(1)));
  EXPECT_TRUE(CanMoveUp(table.List(), table.Place(2)));
  EXPECT_TRUE(CanMoveUp(table.List(), table.Place(3)));
}

TEST(AutostartMoves, OfEqualEntriesOnlyTheFirstCannotGoUp) {
  Table table;
  table.Header(300).Entry(300, 1).Entry(300, 1);
  EXPECT_FALSE(CanMoveUp(table.List(), table.Place(1)));
  EXPECT_TRUE(CanMoveUp(table.List(), table.Place(2)));
}

TEST(AutostartMoves, TheLastEntryOfTheListCannotGoDownInTheLastPhase) {
  Table table;
  table.Header(300).Entry(300, 1).Header(1600).Entry(1600, 1).Entry(1600, 2);
  EXPECT_TRUE(CanMoveDown(table.List(), table.Place(1)));
  EXPECT_TRUE(CanMoveDown(table.List(), table.Place(2)));
  EXPECT_FALSE(CanMoveDown(table.List(), table.Place(3)));
}

TEST(AutostartMoves, ARemovedEntryHandsTheSelectionToTheNextOneOfItsGroupElseUpwards) {
  Table table;
  table.Header(300).Entry(300, 1).Entry(300, 2).Header(700).Header(1600).Entry(1600, 1);
  const AutostartList list = table.List();
  EXPECT_EQ(PlaceAfterRemoval(list, table.Place(1)), table.Place(2));
  EXPECT_EQ(PlaceAfterRemoval(list, table.Place(2)), table.Place(1));
  EXPECT_EQ(PlaceAfterRemoval(list, table.Place(3)), table.Place(3) - 1) << "its header";
  EXPECT_EQ(PlaceAfterRemoval(Table().Entry(300, 1).List(), 0), 0u) << "alone";
}

// How far they go

TEST(AutostartMoves, UpIntoAnEmptyGroupGivesOrder1) {
  Table table;
  table.Header(300).Header(700).Header(1600).Entry(1600, 5);
  table.Up(1);
  EXPECT_EQ(table.Text(), "300: 700: 1@1 1600:");
  table.Up(1);
  EXPECT_EQ(table.Text(), "300: 1@1 700: 1600:");
}

TEST(AutostartMoves, UpAppendsToTheGroupAboveAndMarksBoth) {
  Table table;
  table.Header(300).Entry(300, 2).Entry(300, 7).Header(700).Entry(700, 1).Entry(700, 2);
  table.Up(3);
  EXPECT_EQ(table.Text(), "300: 1@2 2@7 3@8 700: 4@2");
  EXPECT_EQ(table.Marked(), (std::set<int32_t>{2, 3}));
}

TEST(AutostartMoves, UpUnderTheFirstHeaderStaysThere) {
  Table table;
  table.Header(300).Entry(300, 4).Entry(300, 5);
  table.Up(1);
  EXPECT_EQ(table.Text(), "300: 1@1 2@5");
}

TEST(AutostartMoves, DownPutsFirstInTheGroupBelowWhichIsNumberedFrom2) {
  Table table;
  table.Header(300).Entry(300, 1).Header(700).Entry(700, 4).Entry(700, 9).Header(1600).Entry(1600, 1);
  table.Down(1);
  EXPECT_EQ(table.Text(), "300: 700: 1@1 2@2 3@3 1600: 4@1");
  EXPECT_EQ(table.Marked(), (std::set<int32_t>{1, 2, 3}));
}

TEST(AutostartMoves, DownIntoAnEmptyGroupGivesOrder1) {
  Table table;
  table.Header(300).Entry(300, 6).Header(700).Header(1600);
  table.Down(1);
  EXPECT_EQ(table.Text(), "300: 700: 1@1 1600:");
  EXPECT_EQ(table.Marked(), std::set<int32_t>{1});
  table.Down(1);
  EXPECT_EQ(table.Text(), "300: 700: 1600: 1@1");
  table.Down(1);
  EXPECT_EQ(table.Text(), "300: 700: 1600: 1@1");
}

TEST(AutostartMoves, WithinAGroupSwapTheOrders) {
  Table table;
  table.Header(300).Entry(300, 2).Entry(300, 7).Entry(300, 9);
  table.Up(2);
  EXPECT_EQ(table.Text(), "300: 2@2 1@7 3@9");
  EXPECT_EQ(table.Marked(), (std::set<int32_t>{1, 2}));
  table.Down(2);
  EXPECT_EQ(table.Text(), "300: 1@2 2@7 3@9");
}

TEST(AutostartMoves, AmongEqualOrdersNumberThePhaseAnew) {
  Table table;
  table.Header(300).Entry(300, 1).Entry(300, 1).Entry(300, 1).Header(700).Entry(700, 1).Entry(700, 1);
  table.Up(3);
  EXPECT_EQ(table.Text(), "300: 1@1 3@2 2@3 700: 4@1 5@1");
  table.Down(4);
  EXPECT_EQ(table.Text(), "300: 1@1 3@2 2@3 700: 5@1 4@2");
}

TEST(AutostartMoves, ARecordMadeNewStaysNew) {
  Table table;
  table.Header(300).Entry(300, 1).Entry(300, 2);
  table.At(2).SetState(ChangeState::New);
  table.Up(2);
  EXPECT_EQ(table.At(2).GetState(), ChangeState::New);
}

TEST(AutostartMoves, BehindTheHighestOrderNumberThePhaseAnew) {
  Table table;
  table.Header(300).Entry(300, 5).Entry(300, kHighest).Header(700).Entry(700, 1);
  table.Up(3);
  EXPECT_EQ(table.Text(), "300: 1@1 2@2 3@3 700:");
}

TEST(AutostartMoves, WhereNothingIsAboveOrBelowDoNothing) {
  Table table;
  table.Entry(700, 3);
  EXPECT_TRUE(CanMoveUp(table.List(), 0));
  EXPECT_TRUE(CanMoveDown(table.List(), 0));
  table.Up(1);
  table.Down(1);
  EXPECT_EQ(table.Text(), " 1@3");
  EXPECT_THAT(table.Marked(), IsEmpty());
}

TEST(AutostartMoves, OfAnEntryWhosePhaseHasNoHeaderJoinTheNextPhase) {
  Table table;
  table.Header(300).Entry(300, 1).Entry(500, 3).Header(700).Entry(700, 4);
  table.Up(2);
  EXPECT_EQ(table.Text(), "300: 1@1 2@2 700: 3@4");
  Table other;
  other.Header(300).Entry(300, 1).Entry(500, 3).Entry(500, 4);
  other.Down(1);
  EXPECT_EQ(other.Text(), "300: 1@1 2@2 3@3");
  EXPECT_EQ(other.At(1).fields.phase, 500);
}

// Where entries are added

TEST(AutostartInsertion, IsAtTheEndOfTheSelectedRecordsGroup) {
  Table table;
  table.Header(300).Entry(300, 1).Entry(300, 6).Header(700).Entry(700, 9);
  const auto added = Record(50, AutoStartRecordType::Program, 300, 0);
  for (const size_t selected : {0u, 1u, 2u}) EXPECT_EQ(OrderOfNew(table.List(), selected, *added), 7) << selected;
}

TEST(AutostartInsertion, IntoAnotherPhaseFollowsTheSelectedRecordsOrder) {
  Table table;
  table.Header(300).Entry(300, 3).Entry(300, 6).Header(700).Entry(700, 9).Entry(700, 20);
  const auto added = Record(50, AutoStartRecordType::Program, 1600, 0);
  EXPECT_EQ(OrderOfNew(table.List(), 0, *added), 1);
  EXPECT_EQ(OrderOfNew(table.List(), 1, *added), 4);
  added->fields.phase = 700;
  EXPECT_EQ(OrderOfNew(table.List(), 1, *added), 4) << "the next record is of another phase";
  EXPECT_EQ(OrderOfNew(table.List(), 2, *added), 21) << "what follows is of the new phase";
}

TEST(AutostartInsertion, WithNothingSelectedIsOrder1) {
  Table table;
  table.Header(300).Entry(300, 1);
  EXPECT_EQ(OrderOfNew(table.List(), std::nullopt, *Record(50, AutoStartRecordType::Program, 300, 0)), 1);
  EXPECT_EQ(OrderOfNew({}, std::nullopt, *Record(50, AutoStartRecordType::Program, 300, 0)), 1);
}

TEST(AutostartInsertion, BehindTheHighestOrderNumbersThePhaseAnew) {
  Table table;
  table.Header(300).Entry(300, 1).Entry(300, kHighest);
  EXPECT_EQ(OrderOfNew(table.List(), 0, *Record(50, AutoStartRecordType::Program, 300, 0)), 3);
  EXPECT_EQ(table.Text(), "300: 1@1 2@2");
}

TEST(AutostartInsertion, OfAChangedPhaseIsAtTheEndOfThatPhase) {
  Table table;
  table.Header(300).Entry(300, 1).Header(700).Entry(700, 4).Header(1600);
  const AutostartList list = table.List();
  table.At(1).fields.phase = 700;
  EXPECT_EQ(OrderInNewPhase(list, table.At(1)), 5);
  table.At(1).fields.phase = 1600;
  EXPECT_EQ(OrderInNewPhase(list, table.At(1)), 1);
  table.At(1).fields.phase = 1234;
  EXPECT_EQ(OrderInNewPhase(list, table.At(1)), 1) << "it has no header";
  table.At(2).fields.phase = 300;
  EXPECT_EQ(OrderInNewPhase(list, table.At(2)), 1) << "the other one stands elsewhere by now";
}

// All lists of up to six entries in up to three phases

namespace {

// What is seen of a list: the ids of the entries in each phase.
using Groups = std::map<uint16_t, std::vector<int32_t>>;

Groups GroupsOf(const AutostartList& list) {
  Groups groups;
  for (const auto& record : list) {
    auto& group = groups[record->fields.phase];
    if (IsEntry(*record)) group.push_back(record->fields.id);
  }
  return groups;
}

bool OrdersAreUnique(const AutostartList& list) {
  std::set<uint32_t> keys;
  return std::ranges::all_of(list, [&](const auto& record) { return keys.insert(SortKey(*record)).second; });
}

// Moves as one sees them: past the neighbour, or over the border to the neighbouring group.
Groups MovedUp(Groups groups, uint16_t phase, size_t index) {
  const auto group = groups.find(phase);
  if (index > 0) {
    std::swap(group->second[index], group->second[index - 1]);
  } else if (group != groups.begin()) {
    std::prev(group)->second.push_back(group->second.front());
    group->second.erase(group->second.begin());
  }
  return groups;
}

Groups MovedDown(Groups groups, uint16_t phase, size_t index) {
  const auto group = groups.find(phase);
  if (index + 1 < group->second.size()) {
    std::swap(group->second[index], group->second[index + 1]);
  } else if (const auto next = std::next(group); next != groups.end()) {
    next->second.insert(next->second.begin(), group->second.back());
    group->second.pop_back();
  }
  return groups;
}

struct Place {
  uint16_t phase;
  uint16_t order;
};

AutoStartTable MakeTable(const std::vector<uint16_t>& phases, const std::vector<Place>& entries, bool idsRise) {
  AutoStartTable records;
  for (const uint16_t phase : phases) {
    records[phase] = Record(phase, AutoStartRecordType::PhaseHeader, phase, 0);
  }
  for (size_t index = 0; index < entries.size(); ++index) {
    const auto id = static_cast<uint32_t>(idsRise ? 1 + index : entries.size() - index);
    records[id] =
        Record(static_cast<int32_t>(id), AutoStartRecordType::Program, entries[index].phase, entries[index].order);
  }
  return records;
}

// Calls `check` with the headers and entries of every list: in each phase there are two orders, any number of times.
void ForEachList(const std::function<void(const std::vector<uint16_t>&, const std::vector<Place>&)>& check) {
  constexpr size_t kMost = 6;
  const std::array<uint16_t, 3> all = {300, 700, 1600};
  for (unsigned chosen = 1; chosen < 8; ++chosen) {
    std::vector<uint16_t> phases;
    std::vector<Place> places;
    for (size_t index = 0; index < all.size(); ++index) {
      if ((chosen >> index & 1) == 0) continue;
      phases.push_back(all.at(index));
      for (const uint16_t order : std::array<uint16_t, 2>{1, 3}) places.push_back({all.at(index), order});
    }
    std::vector<Place> entries;
    const std::function<void(size_t)> extend = [&](size_t first) {
      check(phases, entries);
      if (entries.size() == kMost) return;
      for (size_t index = first; index < places.size(); ++index) {
        entries.push_back(places[index]);
        extend(index);
        entries.pop_back();
      }
    };
    extend(0);
  }
}

using Move = void (*)(const AutostartList&, size_t);
using ExpectedMove = Groups (*)(Groups, uint16_t, size_t);

// Moves the entry at a place of a list and compares with what is expected to be seen.
void CheckMove(const AutoStartTable& records, size_t place, Move move, ExpectedMove expected) {
  const AutostartList list = InOrder(records);
  const uint16_t phase = list[place]->fields.phase;
  const Groups before = GroupsOf(list);
  const auto& group = before.at(phase);
  const auto index = static_cast<size_t>(std::ranges::find(group, list[place]->fields.id) - group.begin());
  const bool wereUnique = OrdersAreUnique(list);
  move(list, place);
  const AutostartList after = InOrder(records);
  ASSERT_EQ(GroupsOf(after), expected(before, phase, index));
  ASSERT_TRUE(OrdersAreUnique(after) || !wereUnique);
  ASSERT_TRUE(list[place]->GetState() == ChangeState::Changed || GroupsOf(after) == before);
}

void CheckMovesOf(const std::vector<uint16_t>& phases, const std::vector<Place>& entries) {
  for (const bool idsRise : {true, false}) {
    const AutoStartTable original = MakeTable(phases, entries, idsRise);
    const AutostartList list = InOrder(original);
    for (size_t place = 0; place < list.size(); ++place) {
      if (!IsEntry(*list[place])) continue;
      CheckMove(MakeTable(phases, entries, idsRise), place, MoveUp, MovedUp);
      CheckMove(MakeTable(phases, entries, idsRise), place, MoveDown, MovedDown);
      if (testing::Test::HasFatalFailure()) return;
      // The first entry whose order is not the lowest gets that.
      const bool isFirst = list[place]->fields.phase == 300 && place == 1;
      ASSERT_EQ(CanMoveUp(list, place), !isFirst || list[place]->fields.order > 1);
      const bool isLast = list[place]->fields.phase == 1600 && place + 1 == list.size();
      ASSERT_EQ(CanMoveDown(list, place), !isLast);
    }
  }
}

// An entry that is added stands behind all others of the selected record's group.
void CheckInsertionsInto(const std::vector<uint16_t>& phases, const std::vector<Place>& entries) {
  AutoStartTable records = MakeTable(phases, entries, true);
  const AutostartList list = InOrder(records);
  for (size_t selected = 0; selected < list.size(); ++selected) {
    const auto added = Record(50, AutoStartRecordType::Program, list[selected]->fields.phase, 0);
    added->fields.order = OrderOfNew(list, selected, *added);
    records[50] = added;
    Groups expected = GroupsOf(list);
    expected.at(added->fields.phase).push_back(50);
    ASSERT_EQ(GroupsOf(InOrder(records)), expected);
    records.erase(50);
  }
}

// An entry whose phase is changed stands behind all others of its new phase.
void CheckChangesOfPhase(const std::vector<uint16_t>& phases, const std::vector<Place>& entries) {
  for (const uint16_t phase : phases) {
    for (size_t id = 1; id <= entries.size(); ++id) {
      const AutoStartTable records = MakeTable(phases, entries, true);
      const AutostartList list = InOrder(records);
      AutoStartItem& changed = *records.at(static_cast<uint32_t>(id));
      if (changed.fields.phase == phase) continue;
      Groups expected = GroupsOf(list);
      std::erase(expected.at(changed.fields.phase), changed.fields.id);
      expected.at(phase).push_back(changed.fields.id);
      changed.fields.phase = phase;
      changed.fields.order = OrderInNewPhase(list, changed);
      ASSERT_EQ(GroupsOf(InOrder(records)), expected);
    }
  }
}

}  // namespace

TEST(AutostartLists, EveryMoveInEveryListGoesOneStep) {
  ForEachList([](const auto& phases, const auto& entries) {
    if (!testing::Test::HasFatalFailure()) CheckMovesOf(phases, entries);
  });
}

TEST(AutostartLists, EveryInsertionIntoEveryListIsAtTheEndOfTheGroup) {
  ForEachList([](const auto& phases, const auto& entries) {
    if (testing::Test::HasFatalFailure()) return;
    CheckInsertionsInto(phases, entries);
    CheckChangesOfPhase(phases, entries);
  });
}
