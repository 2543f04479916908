#include "LoginProperties/Preferences/PreferenceRules.h"

#include <gmock/gmock.h>

#include "NetUtilities/Text/Utf8.h"

namespace {

using enum PreferenceId;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::Pair;

constexpr int32_t kOff = Preference::kOff;
constexpr int32_t kOn = Preference::kOn;

PreferenceTable Table(const std::vector<std::pair<PreferenceId, int32_t>>& values) {
  PreferenceTable table;
  for (const auto& [id, value] : values) {
    table[id] = std::make_shared<Preference>(PreferenceFields{.preferenceId = id, .profileId = 2001, .state = value});
  }
  return table;
}

int32_t Number(PreferenceId id) { return static_cast<int32_t>(id); }

int32_t State(const PreferenceTree& tree, PreferenceId id) {
  for (const PreferenceGroup& group : tree) {
    for (const PreferenceEntry& entry : group.entries) {
      if (entry.id == id) return entry.state;
    }
  }
  ADD_FAILURE() << "no entry " << Number(id);
  return 0;
}

// The entries of a group that are on.
std::vector<PreferenceId> On(const PreferenceTree& tree, PreferenceId groupId) {
  std::vector<PreferenceId> on;
  for (const PreferenceGroup& group : tree) {
    if (group.id != groupId) continue;
    for (const PreferenceEntry& entry : group.entries) {
      if (entry.state == kOn) on.push_back(entry.id);
    }
  }
  return on;
}

Profile MakeProfile(uint32_t id, bool overrides) {
  Profile profile(0);
  profile.Columns().profileId = id;  // also 10000, which asks the constructor for a new id
  profile.Columns().linkProfile = 7;
  profile.SetDefaultPreferences(!overrides);
  return profile;
}

}  // namespace

TEST(ProfileToLoad, IsTheProfileThatOverridesElseTheLinkedOne) {
  EXPECT_EQ(ProfileToLoad(MakeProfile(2001, true)), 2001u);
  EXPECT_EQ(ProfileToLoad(MakeProfile(2001, false)), 7u);
}

TEST(ProfileToLoad, IsAlwaysTheLinkedOneForIdsAbove10000) {
  EXPECT_EQ(ProfileToLoad(MakeProfile(9999, true)), 9999u);
  EXPECT_EQ(ProfileToLoad(MakeProfile(10000, true)), 10000u);
  EXPECT_EQ(ProfileToLoad(MakeProfile(10001, true)), 7u);
  EXPECT_EQ(ProfileToLoad(MakeProfile(10001, false)), 7u);
}

TEST(ApplyPreferences, GivesCheckBoxesTheirStates) {
  PreferenceTree tree = MakePreferenceTree(true);
  ApplyPreferences(Table({{AutoConnect, kOn}, {MinimizeToTray, kOff}, {UseSavedCertificate, kOff}}), tree);
  EXPECT_EQ(State(tree, AutoConnect), kOn);
  EXPECT_EQ(State(tree, MinimizeToTray), kOff);
  EXPECT_EQ(State(tree, UseSavedCertificate), kOff);
}

TEST(ApplyPreferences, LeavesCheckBoxesThatTheTableDoesNotHave) {
  PreferenceTree tree = MakePreferenceTree(true);
  ApplyPreferences({}, tree);
  EXPECT_EQ(State(tree, UseSavedCertificate), kOn) << "built in";
  EXPECT_EQ(State(tree, AutoConnect), kOff) << "built in";
  ApplyPreferences(Table({{AutoConnect, kOn}}), tree);
  ApplyPreferences({}, tree);
  EXPECT_EQ(State(tree, AutoConnect), kOn);
}

TEST(ApplyPreferences, TurnsTheChosenOptionOnAndTheOthersOff) {
  PreferenceTree tree = MakePreferenceTree(false);
  ApplyPreferences(Table({{VpnMtu, Number(VpnMtuDefault)}, {HotspotMap, Number(HotspotMapGoogle)}}), tree);
  EXPECT_THAT(On(tree, VpnMtu), ElementsAre(VpnMtuDefault));
  EXPECT_THAT(On(tree, HotspotMap), ElementsAre(HotspotMapGoogle));
  ApplyPreferences(Table({{VpnMtu, Number(VpnMtu700)}}), tree);
  EXPECT_THAT(On(tree, VpnMtu), ElementsAre(VpnMtu700));
  EXPECT_THAT(On(tree, HotspotMap), IsEmpty()) << "not in the table";
}

TEST(ApplyPreferences, AValueThatIsNoOptionLeavesAllOptionsOff) {
  PreferenceTree tree = MakePreferenceTree(false);
  for (const int32_t value : {0, kOn, Number(HotspotMapBing)}) {
    ApplyPreferences(Table({{VpnMtu, value}}), tree);
    EXPECT_THAT(On(tree, VpnMtu), IsEmpty()) << value;
  }
}

TEST(ApplyPreferences, AnOptionIsNotMovedByARecordOfItsOwn) {
  PreferenceTree tree = MakePreferenceTree(false);
  ApplyPreferences(Table({{VpnMtu, Number(VpnMtu700)}, {VpnMtu1300, kOn}}), tree);
  EXPECT_THAT(On(tree, VpnMtu), ElementsAre(VpnMtu700));
}

TEST(ApplyPreferences, EntriesWithTextHaveRecordsOfTheirOwn) {
  PreferenceTree tree = {{.id = VpnMtu,
                          .kind = GroupKind::Choice,
                          .entries = {{.id = VpnMtu1300, .kind = EntryKind::RadioOptionWithText, .text = L"1300"},
                                      {.id = VpnMtu700, .kind = EntryKind::CheckBoxWithText, .text = L"700"}}}};
  ApplyPreferences(Table({{VpnMtu, Number(VpnMtu1300)}, {VpnMtu700, kOn}}), tree);
  EXPECT_THAT(On(tree, VpnMtu), ElementsAre(VpnMtu700));
}

TEST(ApplyPreferences, PassesTheGroup1080By) {
  PreferenceTree tree = {{.id = PreferenceId{1080},
                          .kind = GroupKind::CheckBoxes,
                          .entries = {{.id = AutoConnect, .kind = EntryKind::CheckBox}}}};
  ApplyPreferences(Table({{AutoConnect, kOn}}), tree);
  EXPECT_EQ(State(tree, AutoConnect), kOff);
}

TEST(ShownState, IsTheEntrysOwn) {
  const TreeConditions conditions{.preventMultiHoming = true, .bypassHardwareRendering = true};
  EXPECT_EQ(ShownState({.id = AutoConnect, .state = kOff}, conditions), kOff);
  EXPECT_EQ(ShownState({.id = AutoConnect, .state = kOn}, {}), kOn);
}

TEST(ShownState, OfMultiHomingIsWhatTheAdministratorSays) {
  for (const int32_t own : {kOff, kOn}) {
    const PreferenceEntry entry{.id = PreventMultiHoming, .state = own};
    EXPECT_EQ(ShownState(entry, {.preventMultiHoming = true, .bypassHardwareRendering = {}}), kOn);
    EXPECT_EQ(ShownState(entry, {.preventMultiHoming = false, .bypassHardwareRendering = {}}), kOff);
    EXPECT_EQ(ShownState(entry, {}), std::nullopt);
  }
}

TEST(ShownState, OfHardwareRenderingIsTheMachinesWhereThatCounts) {
  for (const int32_t own : {kOff, kOn}) {
    const PreferenceEntry entry{.id = BypassHardwareRendering, .state = own};
    EXPECT_EQ(ShownState(entry, {.preventMultiHoming = {}, .bypassHardwareRendering = true}), kOn);
    EXPECT_EQ(ShownState(entry, {.preventMultiHoming = {}, .bypassHardwareRendering = false}), kOff);
    EXPECT_EQ(ShownState(entry, {}), own);
  }
}

TEST(StateImage, ShowsKindAndState) {
  for (const EntryKind kind : {EntryKind::CheckBox, EntryKind::CheckBoxWithText}) {
    EXPECT_EQ(StateImage(kind, kOff), 1);
    EXPECT_EQ(StateImage(kind, kOn), 2);
  }
  for (const EntryKind kind : {EntryKind::RadioOption, EntryKind::RadioOptionWithText}) {
    EXPECT_EQ(StateImage(kind, kOff), 7);
    EXPECT_EQ(StateImage(kind, kOn), 8);
  }
  EXPECT_EQ(StateImage(EntryKind{4}, kOn), 0);
}

TEST(Toggle, TurnsACheckBoxOverInTreeAndTable) {
  PreferenceTree tree = MakePreferenceTree(false);
  const PreferenceTable table = Table({{AutoConnect, kOff}, {MinimizeToTray, kOff}});
  ApplyPreferences(table, tree);
  EXPECT_THAT(Toggle(AutoConnect, tree, table), ElementsAre(Pair(AutoConnect, 2)));
  EXPECT_EQ(State(tree, AutoConnect), kOn);
  EXPECT_EQ(table.at(AutoConnect)->GetValue(), kOn);
  EXPECT_EQ(table.at(AutoConnect)->GetState(), ChangeState::Changed);
  EXPECT_EQ(table.at(MinimizeToTray)->GetState(), ChangeState::Unchanged);
  EXPECT_THAT(Toggle(AutoConnect, tree, table), ElementsAre(Pair(AutoConnect, 1)));
  EXPECT_EQ(State(tree, AutoConnect), kOff);
  EXPECT_EQ(table.at(AutoConnect)->GetValue(), kOff);
}

TEST(Toggle, TurnsACheckBoxOverByItsRecord) {
  PreferenceTree tree = MakePreferenceTree(false);
  // The tree was never told.
  const PreferenceTable table = Table({{AutoConnect, kOn}, {MinimizeToTray, 0}});
  EXPECT_THAT(Toggle(AutoConnect, tree, table), ElementsAre(Pair(AutoConnect, 1)));
  EXPECT_EQ(table.at(AutoConnect)->GetValue(), kOff);
  EXPECT_THAT(Toggle(MinimizeToTray, tree, table), ElementsAre(Pair(MinimizeToTray, 2)));
}

TEST(Toggle, LeavesACheckBoxWithoutARecord) {
  PreferenceTree tree = MakePreferenceTree(true);
  EXPECT_THAT(Toggle(UseSavedCertificate, tree, {}), IsEmpty());
  EXPECT_EQ(State(tree, UseSavedCertificate), kOn);
  EXPECT_THAT(Toggle(AutoConnect, tree, {{AutoConnect, nullptr}}), IsEmpty());
}

TEST(Toggle, ChoosesAnOption) {
  PreferenceTree tree = MakePreferenceTree(false);
  const PreferenceTable table = Table({{VpnMtu, Number(VpnMtuDefault)}, {HotspotMap, Number(HotspotMapBing)}});
  ApplyPreferences(table, tree);
  EXPECT_THAT(Toggle(VpnMtu1300, tree, table), ElementsAre(Pair(VpnMtuDefault, 7), Pair(VpnMtu1300, 8)));
  EXPECT_THAT(On(tree, VpnMtu), ElementsAre(VpnMtu1300));
  EXPECT_EQ(table.at(VpnMtu)->GetValue(), 1480);
  EXPECT_EQ(table.at(VpnMtu)->GetState(), ChangeState::Changed);
  EXPECT_EQ(table.at(HotspotMap)->GetState(), ChangeState::Unchanged);
  EXPECT_THAT(On(tree, HotspotMap), ElementsAre(HotspotMapBing));
}

TEST(Toggle, OfTheChosenOptionTurnsAllOffAndKeepsTheChoice) {
  PreferenceTree tree = MakePreferenceTree(false);
  const PreferenceTable table = Table({{VpnMtu, Number(VpnMtu1300)}});
  ApplyPreferences(table, tree);
  EXPECT_THAT(Toggle(VpnMtu1300, tree, table), ElementsAre(Pair(VpnMtu1300, 7)));
  EXPECT_THAT(On(tree, VpnMtu), IsEmpty());
  EXPECT_EQ(table.at(VpnMtu)->GetValue(), 1480);
  EXPECT_THAT(Toggle(VpnMtu1300, tree, table), ElementsAre(Pair(VpnMtu1300, 8))) << "and on again";
}

TEST(Toggle, MovesOptionsInTheTreeAlsoWithoutARecord) {
  PreferenceTree tree = MakePreferenceTree(false);
  EXPECT_THAT(Toggle(VpnMtu700, tree, {}), ElementsAre(Pair(VpnMtu700, 8)));
  EXPECT_THAT(On(tree, VpnMtu), ElementsAre(VpnMtu700));
}

TEST(Toggle, TakesOptionsButNotCheckBoxesWithText) {
  PreferenceTree tree = {{.id = VpnMtu,
                          .kind = GroupKind::Choice,
                          .entries = {{.id = VpnMtu1300, .kind = EntryKind::RadioOptionWithText, .text = L"1300"},
                                      {.id = VpnMtu700, .kind = EntryKind::CheckBoxWithText, .text = L"700"}}}};
  const PreferenceTable table = Table({{VpnMtu, 0}, {VpnMtu700, kOff}});
  EXPECT_THAT(Toggle(VpnMtu1300, tree, table), ElementsAre(Pair(VpnMtu1300, 8)));
  EXPECT_EQ(table.at(VpnMtu)->GetValue(), 1480);
  EXPECT_THAT(Toggle(VpnMtu700, tree, table), IsEmpty());
  EXPECT_EQ(table.at(VpnMtu700)->GetState(), ChangeState::Unchanged);
}

TEST(Toggle, OfAHeadingOrNothingDoesNothing) {
  PreferenceTree tree = MakePreferenceTree(false);
  const PreferenceTable table = Table({{VpnMtu, Number(VpnMtu1300)}, {VpnGroup, kOff}});
  for (const PreferenceId id : {VpnMtu, VpnGroup, PreferenceId{0}}) EXPECT_THAT(Toggle(id, tree, table), IsEmpty());
  EXPECT_EQ(table.at(VpnMtu)->GetState(), ChangeState::Unchanged);
  EXPECT_EQ(table.at(VpnGroup)->GetState(), ChangeState::Unchanged);
}

TEST(ParseCertificateHash, ReadsThirtyTwoDigits) {
  EXPECT_THAT(ParseCertificateHash(L"000102030405060708090a0B0c0D0eFf"),
              Optional(ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 255)));
}

TEST(ParseCertificateHash, ReadsFortyDigits) {
  EXPECT_THAT(ParseCertificateHash(L"000102030405060708090a0B0c0D0e0f101112Ff"),
              Optional(ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 255)));
}

TEST(ParseCertificateHash, TakesNoNoticeOfBlanks) {
  EXPECT_EQ(ParseCertificateHash(L"00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f 10 11 12 ff"),
            ParseCertificateHash(L"000102030405060708090a0b0c0d0e0f101112ff"));
  EXPECT_EQ(ParseCertificateHash(L" 0001 0203 0405 0607 0809 0a0b 0c0d 0eff "),
            ParseCertificateHash(L"000102030405060708090a0b0c0d0eff"));
}

TEST(ParseCertificateHash, ReadsNoOtherText) {
  for (const wchar_t* text :
       {L"", L" ", L"ff", L"fffffffffffffffffffffffffffffff", L"fffffffffffffffffffffffffffffffff",
        L"ffffffffffffffffffffffffffffffffff", L"fffffffffffffffffffffffffffffffg", L" fffffffffffffffffffffffffffffff",
        L"fffffffffffffffffffffffffffffffffffffff", L"fffffffffffffffffffffffffffffffffffffffff",
        L"ff:ff:ff:ff:ff:ff:ff:ff:ff:ff:ff:ff:ff:ff:ff:ff", L"\u200e00000000000000000000000000000000"}) {
    EXPECT_EQ(ParseCertificateHash(text), std::nullopt) << ToUtf8(text);
  }
}
