// Preferences and autostart entries that a new profile gets from another one.

#include <gmock/gmock.h>

#include "tests/WaylineDll/Store/StoreTest.h"
#include "WaylineDll/Store/SettingsStore.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

// What belongs to a profile, but for its id and the numbers of the entries.
constexpr char kPreferences[] =
    "SELECT group_concat(Row) FROM (SELECT PreferenceId || ' ' || State || ' ' || Visible || ' ' || IPSecRequired AS "
    "Row FROM Preferences WHERE ProfileId = %1 ORDER BY PreferenceId)";
constexpr char kAutoStart[] =
    "SELECT group_concat(Row) FROM (SELECT Phase || ' ' || ItemOrder || ' ' || RecordType || ' ' || Name || ' ' || "
    "Modifiable || ' ' || Program || ' ' || Parameters || ' ' || Directory || ' ' || DelaySeconds || ' ' || WaitMode "
    "AS Row FROM AutoStart WHERE ProfileId = %1 ORDER BY Phase, ItemOrder)";

class CopiedLists : public LoadedStoreTest {
 protected:
  // A new profile that follows these defaults, to be saved.
  uint32_t AddNew(uint32_t defaults) {
    std::shared_ptr<Profile> created;
    EXPECT_EQ(store_.CreateProfile(created), Failure());
    created->Columns().linkProfile = defaults;
    created->SetName(L"Fresh");
    created->SetState(ChangeState::New);
    tables_.profiles[created->GetProfileId()] = created;
    return created->GetProfileId();
  }

  std::string RowsOf(std::string statement, uint32_t profileId) const {
    statement.replace(statement.find("%1"), 2, std::to_string(profileId));
    return Sql(statement);
  }

  std::vector<std::wstring> EntriesOf(uint32_t profileId) {
    AutoStartTable items;
    EXPECT_TRUE(store_.LoadAutoStart(profileId, items));
    std::vector<std::wstring> names;
    for (const auto& [id, item] : items) {
      EXPECT_EQ(item->fields.profileId, static_cast<int32_t>(profileId));
      if (item->fields.recordType == AutoStartRecordType::Program) names.push_back(item->fields.name);
    }
    return names;
  }

  int32_t PreferenceValue(uint32_t profileId, PreferenceId id) { return PreferenceOf(profileId, id)->GetValue(); }
};

}  // namespace

TEST_F(CopiedLists, AreHandedOutAndSavedForTheNewProfile) {
  const uint32_t id = AddNew(100);
  ASSERT_TRUE(store_.CopyLists(2004, id));
  EXPECT_EQ(PreferenceValue(id, PreferenceId::AutoConnect), Preference::kOn);
  EXPECT_THAT(EntriesOf(id), ElementsAre(L"Device check", L"Notes", L"Calculator", L"Goodbye"));
  const std::string preferences = RowsOf(kPreferences, 2004);
  const std::string entries = RowsOf(kAutoStart, 2004);
  SaveSucceeds();
  EXPECT_EQ(RowsOf(kPreferences, id), preferences);
  EXPECT_EQ(RowsOf(kAutoStart, id), entries);
  EXPECT_EQ(RowsOf(kPreferences, 2004), preferences) << "the source keeps its own";
  EXPECT_EQ(RowsOf(kAutoStart, 2004), entries);
}

TEST_F(CopiedLists, AreStoredAlsoWhereTheDefaultsSayTheSame) {
  const uint32_t id = AddNew(2000);
  ASSERT_TRUE(store_.CopyLists(1, id));
  SaveSucceeds();
  EXPECT_EQ(RowsOf(kPreferences, id), RowsOf(kPreferences, 1));
  EXPECT_EQ(RowsOf(kAutoStart, id), RowsOf(kAutoStart, 1));
}

TEST_F(CopiedLists, AreWithoutWhatTheSourceInherits) {
  const uint32_t id = AddNew(100);
  ASSERT_TRUE(store_.CopyLists(2001, id));
  EXPECT_EQ(PreferenceValue(id, PreferenceId::VpnMtu), 1480) << "of the defaults of the new profile";
  SaveSucceeds();
  EXPECT_EQ(RowsOf(kPreferences, id), "NULL");
  EXPECT_EQ(RowsOf(kAutoStart, id), "NULL");
}

TEST_F(CopiedLists, HoldWhatTheUserHasJustChangedInTheSource) {
  PreferenceOf(2004, PreferenceId::AutoConnect)->SetValue(Preference::kOff);
  PreferenceOf(2001, PreferenceId::AutoConnect)->SetValue(Preference::kOn);
  AutoStartOf(2004, L"Notes")->SetState(ChangeState::Removed);
  AutoStartOf(2003, L"Clean up")->SetState(ChangeState::Changed);
  const uint32_t ofOffice = AddNew(1);
  ASSERT_TRUE(store_.CopyLists(2004, ofOffice));
  EXPECT_EQ(PreferenceValue(ofOffice, PreferenceId::AutoConnect), Preference::kOff);
  EXPECT_THAT(EntriesOf(ofOffice), ElementsAre(L"Device check", L"Calculator", L"Goodbye"));
  const uint32_t ofWork = AddNew(1);
  ASSERT_TRUE(store_.CopyLists(2001, ofWork));
  const uint32_t ofTravel = AddNew(1);
  ASSERT_TRUE(store_.CopyLists(2003, ofTravel));
  EXPECT_THAT(EntriesOf(ofTravel), ElementsAre(L"Clean up"));
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT group_concat(PreferenceId || ' ' || State) FROM Preferences WHERE ProfileId = " +
                std::to_string(ofWork)),
            "1014 2");
}

TEST_F(CopiedLists, CanBeCopiedOnAndChanged) {
  const uint32_t first = AddNew(1);
  ASSERT_TRUE(store_.CopyLists(2004, first));
  const uint32_t second = AddNew(1);
  ASSERT_TRUE(store_.CopyLists(first, second));
  PreferenceOf(second, PreferenceId::AutoConnect)->SetValue(Preference::kOff);
  AutoStartOf(second, L"Notes")->fields.name = L"Remarks";
  AutoStartOf(second, L"Goodbye")->SetState(ChangeState::Removed);
  SaveSucceeds();
  EXPECT_EQ(RowsOf(kPreferences, first), RowsOf(kPreferences, 2004));
  EXPECT_EQ(Sql("SELECT State FROM Preferences WHERE PreferenceId = 1014 AND ProfileId = " + std::to_string(second)),
            "1");
  EXPECT_EQ(Sql("SELECT group_concat(Name) FROM (SELECT Name FROM AutoStart WHERE RecordType = 2 AND ProfileId = " +
                std::to_string(second) + " ORDER BY Phase, ItemOrder)"),
            "Device check,Remarks,Calculator");
}

TEST_F(CopiedLists, AreTheSameRecordsForAllWhoAsk) {
  const uint32_t id = AddNew(1);
  ASSERT_TRUE(store_.CopyLists(2004, id));
  AutoStartTable own;
  ASSERT_TRUE(store_.LoadOwnAutoStart(2004, own));
  AutoStartTable all;
  ASSERT_TRUE(store_.LoadAutoStart(id, all));
  EXPECT_EQ(store_.CopyAutoStart(id, own, tables_.autoStartItems), 8u);
  EXPECT_EQ(tables_.autoStartItems, all);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT count(*) FROM AutoStart WHERE ProfileId = " + std::to_string(id)), "8") << "once each";
}

TEST_F(CopiedLists, GoWithAProfileThatIsRemovedAgainOrDropped) {
  const std::string before = FileBytes(file_);
  const uint32_t removed = AddNew(1);
  ASSERT_TRUE(store_.CopyLists(2004, removed));
  tables_.profiles.at(removed)->SetState(ChangeState::Removed);
  const uint32_t dropped = AddNew(1);
  ASSERT_TRUE(store_.CopyLists(2004, dropped));
  tables_.profiles.erase(dropped);
  SaveSucceeds();
  EXPECT_EQ(FileBytes(file_), before);
}

TEST_F(CopiedLists, AreForgottenWithTheChanges) {
  const uint32_t id = AddNew(1);
  ASSERT_TRUE(store_.CopyLists(2004, id));
  store_.DiscardChanges();
  EXPECT_THAT(EntriesOf(id), IsEmpty());
  EXPECT_FALSE(store_.CopyLists(2004, id)) << "there is nothing to save them with";
}

TEST_F(CopiedLists, ThatCannotBeReadAreNotCopiedInPart) {
  const uint32_t id = AddNew(100);
  Sql("DROP TABLE AutoStart");
  EXPECT_FALSE(store_.CopyLists(2004, id));
  EXPECT_FALSE(log_.Messages().empty());
  EXPECT_EQ(PreferenceValue(id, PreferenceId::AutoConnect), Preference::kOff);
  Sql("DROP TABLE Preferences");
  const uint32_t other = AddNew(100);
  EXPECT_FALSE(store_.CopyLists(2001, other));
}

TEST_F(CopiedLists, OfAProfileThatIsStoredReplaceWhatItInherits) {
  AutoStartTable own;
  ASSERT_TRUE(store_.LoadOwnAutoStart(2004, own));
  ASSERT_THAT(EntriesOf(2003), ElementsAre(L"Clean up"));
  own[7] = nullptr;
  EXPECT_EQ(store_.CopyAutoStart(2003, own, tables_.autoStartItems), 8u);
  EXPECT_THAT(EntriesOf(2003), ElementsAre(L"Device check", L"Notes", L"Calculator", L"Goodbye"));
  SaveSucceeds();
  EXPECT_EQ(RowsOf(kAutoStart, 2003), RowsOf(kAutoStart, 2004));
}

TEST_F(CopiedLists, WithoutEntriesLeaveTheProfileWhatItInherits) {
  ASSERT_FALSE(EntriesOf(2003).empty());
  const uint32_t unread = AddNew(2000);
  for (const uint32_t id : {2003u, unread}) {
    EXPECT_EQ(store_.CopyAutoStart(id, {}, tables_.autoStartItems), 0u);
    EXPECT_THAT(EntriesOf(id), ElementsAre(L"Clean up"));
  }
}

TEST_F(CopiedLists, OfAProfileThatHasAListOfItsOwnAreAddedToIt) {
  AutoStartTable own;
  ASSERT_TRUE(store_.LoadOwnAutoStart(2004, own));
  EXPECT_EQ(store_.CopyAutoStart(100, own, tables_.autoStartItems), 8u) << "its list was not asked for yet";
  AutoStartTable all;
  ASSERT_TRUE(store_.LoadAutoStart(100, all));
  EXPECT_THAT(all, SizeIs(13));
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT count(*) FROM AutoStart WHERE ProfileId = 100"), "13");
}

TEST_F(CopiedLists, OfNothingLeaveTheProfileWhatItInherits) {
  const auto removed = AutoStartOf(2004, L"Notes");
  removed->SetState(ChangeState::Removed);
  EXPECT_EQ(store_.CopyAutoStart(2003, {{1, nullptr}, {2, removed}}, tables_.autoStartItems), 0u);
  EXPECT_THAT(EntriesOf(2003), ElementsAre(L"Clean up"));
  EXPECT_THAT(tables_.autoStartItems, IsEmpty());
}

TEST_F(CopiedLists, AreWithoutThePreferencesThatASourceOnlyShares) {
  PreferenceTable own;
  EXPECT_FALSE(store_.LoadOwnPreferences(10001, own)) << "it shows those of its defaults";
  const uint32_t id = AddNew(1);
  ASSERT_TRUE(store_.CopyLists(10001, id));
  SaveSucceeds();
  EXPECT_EQ(RowsOf(kPreferences, id), "NULL");
}

TEST_F(CopiedLists, OwnEntriesAreThoseOfAListThatIsStoredOrChanged) {
  AutoStartTable items = {{1, nullptr}};
  EXPECT_FALSE(store_.LoadOwnAutoStart(2001, items)) << "inherited";
  EXPECT_THAT(items, IsEmpty());
  AutoStartOf(2003, L"Clean up")->SetState(ChangeState::Changed);
  EXPECT_TRUE(store_.LoadOwnAutoStart(2003, items));
  EXPECT_THAT(items, SizeIs(5)) << "the whole list is to be stored";
  for (const auto& [id, item] : items) item->SetState(ChangeState::Removed);
  EXPECT_FALSE(store_.LoadOwnAutoStart(2003, items));
  Sql("DROP TABLE AutoStart");
  EXPECT_FALSE(store_.LoadOwnAutoStart(2004, items));
}

TEST_F(CopiedLists, ServicesAreReadInTheOrderOfTheirIds) {
  Sql("INSERT INTO Services VALUES (7, 'slow', 'Slow Lane')");
  std::vector<ServiceRecord> services;
  ASSERT_TRUE(store_.LoadServices(services));
  std::vector<std::wstring> texts;
  for (const ServiceRecord& service : services) texts.push_back(service.displayText);
  EXPECT_THAT(texts, ElementsAre(L"Slow Lane", L"Standard Access", L"Secure Tunnel", L"Guest Internet"));
  Sql("DROP TABLE Services");
  EXPECT_FALSE(store_.LoadServices(services));
  EXPECT_THAT(services, IsEmpty());
}
