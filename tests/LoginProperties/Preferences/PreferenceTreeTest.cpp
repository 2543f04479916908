#include "LoginProperties/Preferences/PreferenceTree.h"

#include <gmock/gmock.h>

#include <map>

#include "Database/Profiles/BuiltInPreferences.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;

// A group and its entries by the numbers of their labels.
struct Numbers {
  int32_t group;
  int32_t kind;
  int headingImage;
  std::vector<int32_t> entries;
  bool operator==(const Numbers&) const = default;
};

void PrintTo(const Numbers& numbers, std::ostream* out) {
  *out << numbers.group << " of kind " << numbers.kind << " with image " << numbers.headingImage << ": "
       << testing::PrintToString(numbers.entries);
}

std::vector<Numbers> NumbersOf(const PreferenceTree& tree) {
  std::vector<Numbers> all;
  for (const PreferenceGroup& group : tree) {
    Numbers numbers{static_cast<int32_t>(group.id), static_cast<int32_t>(group.kind), group.headingImage, {}};
    for (const PreferenceEntry& entry : group.entries) numbers.entries.push_back(static_cast<int32_t>(entry.id));
    all.push_back(numbers);
  }
  return all;
}

}  // namespace

TEST(PreferenceTree, HasItsGroupsAndEntriesInOrder) {
  const std::vector<Numbers> expected = {
      {1026, 4, 12, {1014, 1501, 1518}},
      {1027, 4, 5, {1504, 1514, 1502, 1485, 1016}},
      {1028, 4, 5, {1017, 1021, 1486}},
      {1029, 4, 9, {1018, 1019}},
      {1030, 4, 4, {1044, 1483, 1487, 1488, 1489, 1492, 1505, 1506}},
      {1031, 4, 3, {1057, 1060}},
      {1082, 8, 13, {1083, 1520}},
      {1477, 8, 3, {1478, 1479, 1480, 1481, 1482}},
      {1507, 8, 3, {1508, 1509, 1510, 1511}},
      {1521, 4, 13, {1522}},
  };
  EXPECT_THAT(NumbersOf(MakePreferenceTree(true)), ElementsAreArray(expected));
}

TEST(PreferenceTree, HasNoCertificatesWhereNoneIsSaved) {
  const PreferenceTree with = MakePreferenceTree(true);
  const PreferenceTree without = MakePreferenceTree(false);
  EXPECT_THAT(without, SizeIs(with.size() - 1));
  EXPECT_THAT(NumbersOf(without), testing::Not(testing::Contains(Field(&Numbers::group, 1521))));
}

TEST(PreferenceTree, OffersOptionsInChoicesAndCheckBoxesElsewhere) {
  for (const PreferenceGroup& group : MakePreferenceTree(true)) {
    const EntryKind kind = group.kind == GroupKind::Choice ? EntryKind::RadioOption : EntryKind::CheckBox;
    EXPECT_THAT(group.entries, Each(Field(&PreferenceEntry::kind, kind))) << static_cast<int32_t>(group.id);
    EXPECT_THAT(group.entries, Each(Field(&PreferenceEntry::text, IsEmpty())));
  }
}

TEST(PreferenceTree, IsOffAtFirstExceptForTheSavedCertificate) {
  std::vector<PreferenceId> on;
  for (const PreferenceGroup& group : MakePreferenceTree(true)) {
    for (const PreferenceEntry& entry : group.entries) {
      EXPECT_TRUE(entry.state == Preference::kOff || entry.state == Preference::kOn);
      if (entry.state == Preference::kOn) on.push_back(entry.id);
    }
  }
  EXPECT_THAT(on, ElementsAre(PreferenceId::UseSavedCertificate));
}

TEST(PreferenceTree, ShowsEveryPreferenceThatTheClientHasInItsBuiltInState) {
  std::map<PreferenceId, int32_t> shown;
  for (const PreferenceGroup& group : MakePreferenceTree(true)) {
    if (group.kind == GroupKind::Choice) {
      shown[group.id] = 0;
      for (const PreferenceEntry& entry : group.entries) EXPECT_EQ(entry.state, Preference::kOff);
    } else {
      for (const PreferenceEntry& entry : group.entries) shown[entry.id] = entry.state;
    }
  }
  std::map<PreferenceId, int32_t> builtIn;
  for (const BuiltInPreference& preference : BuiltInPreferences()) builtIn[preference.id] = preference.value;
  EXPECT_EQ(shown, builtIn);
}
