// Autostart lists while a sheet is open: entries that are added to them, and lists that are emptied.

#include <gmock/gmock.h>

#include "tests/WaylineDll/Store/StoreTest.h"
#include "WaylineDll/Store/BuiltInPhases.h"
#include "WaylineDll/Store/SettingsStore.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class AutoStartLists : public LoadedStoreTest {
 protected:
  std::shared_ptr<AutoStartItem> Add(uint32_t profileId, const std::wstring& name) {
    auto item = store_.CreateAutoStartItem(profileId);
    item->fields.name = name;
    item->fields.order = 1;
    item->SetState(ChangeState::New);
    return item;
  }

  AutoStartTable ListOf(uint32_t profileId) {
    AutoStartTable items;
    EXPECT_TRUE(store_.LoadAutoStart(profileId, items));
    return items;
  }

  // Phases of the headers that are handed out.
  std::vector<uint16_t> HeadersOf(uint32_t profileId) {
    std::vector<uint16_t> phases;
    for (const auto& [id, item] : ListOf(profileId)) {
      if (item->fields.recordType == AutoStartRecordType::PhaseHeader) phases.push_back(item->fields.phase);
    }
    std::ranges::sort(phases);
    return phases;
  }

  void RemovePrograms(uint32_t profileId) {
    for (const auto& [id, item] : ListOf(profileId)) {
      if (item->fields.recordType == AutoStartRecordType::Program) item->SetState(ChangeState::Removed);
    }
  }

  // Loads the records anew, as the client does at its next start.
  void Reload() {
    tables_ = {};
    ASSERT_EQ(store_.LoadProfiles(tables_.profiles), Failure());
  }

  std::string NamesOf(uint32_t profileId) const {
    return Sql("SELECT group_concat(Name) FROM (SELECT Name FROM AutoStart WHERE ProfileId = " +
               std::to_string(profileId) + " ORDER BY Phase, ItemOrder)");
  }

  static constexpr char kHeaders[] =
      "Before connecting,After the network is connected,After the VPN is connected,After disconnecting";
};

}  // namespace

TEST_F(AutoStartLists, HaveAHeaderForEveryPhaseWhateverIsStored) {
  const auto all = ElementsAre(300, 700, 1100, 1600);
  EXPECT_THAT(HeadersOf(2004), all);
  Sql("DELETE FROM AutoStart WHERE RecordType = 1 AND Phase > 300");
  Reload();
  EXPECT_THAT(HeadersOf(2004), all) << "of its own";
  EXPECT_THAT(HeadersOf(2003), all) << "inherited";
  Sql("DELETE FROM AutoStart");
  Reload();
  EXPECT_THAT(HeadersOf(2004), all) << "of nobody";
  std::vector<std::wstring> titles;
  for (const auto& [id, header] : ListOf(2003)) {
    titles.push_back(header->fields.name);
    EXPECT_EQ(header->fields.profileId, 2003);
    EXPECT_EQ(header->fields.order, 0);
    EXPECT_FALSE(header->fields.modifiable);
    EXPECT_EQ(static_cast<uint32_t>(header->fields.id), id);
  }
  EXPECT_THAT(titles, ElementsAre(L"Before connecting", L"After the network is connected",
                                  L"After the VPN is connected", L"After disconnecting"));
}

TEST_F(AutoStartLists, KeepTheTitleThatIsStoredForAPhase) {
  Sql("UPDATE AutoStart SET Name = 'First of all' WHERE ProfileId = 2000 AND Phase = 300 AND RecordType = 1");
  EXPECT_EQ(AutoStartOf(2003, L"First of all")->fields.phase, 300);
  EXPECT_THAT(HeadersOf(2003), ElementsAre(300, 700, 1100, 1600));
}

TEST_F(AutoStartLists, HaveTheSameHeadersInTheSampleData) {
  for (const BuiltInPhase& phase : BuiltInPhases()) {
    EXPECT_EQ(
        Sql("SELECT count(*) FROM AutoStart WHERE RecordType = 1 AND ItemOrder = 0 AND Modifiable = 0 AND "
            "DefinitionLocked = 1 AND Phase = " +
            std::to_string(phase.phase) + " AND Name = '" + std::string(phase.title.begin(), phase.title.end()) + "'"),
        "4");
  }
  EXPECT_EQ(Sql("SELECT count(*) FROM AutoStart WHERE RecordType = 1"), "16");
}

TEST_F(AutoStartLists, HeadersThatWereOnlyLookedAtAreNotStored) {
  Sql("DELETE FROM AutoStart WHERE RecordType = 1");
  Reload();
  const std::string before = FileBytes(file_);
  EXPECT_THAT(HeadersOf(2004), testing::SizeIs(4));
  SaveSucceeds();
  EXPECT_TRUE(FileBytes(file_) == before);
}

TEST_F(AutoStartLists, AnInheritedOneWithoutHeadersStaysEmptyWhenItIsEmptied) {
  Sql("DELETE FROM AutoStart WHERE RecordType = 1");
  Reload();
  RemovePrograms(2003);
  SaveSucceeds();
  EXPECT_EQ(NamesOf(2003), kHeaders);
  Reload();
  EXPECT_THAT(HeadersOf(2003), testing::SizeIs(4));
  EXPECT_THAT(ListOf(2003), testing::SizeIs(4)) << "what the defaults have is not inherited again";
}

TEST_F(AutoStartLists, AStoredOneWithoutHeadersStaysEmptyWhenItIsEmptied) {
  Sql("DELETE FROM AutoStart WHERE RecordType = 1");
  Reload();
  RemovePrograms(2004);
  SaveSucceeds();
  EXPECT_EQ(NamesOf(2004), kHeaders);
  Reload();
  EXPECT_THAT(ListOf(2004), testing::SizeIs(4));
}

TEST_F(AutoStartLists, OfOverriddenDefaultsThatNobodyHasAreStoredEmpty) {
  Sql("DELETE FROM AutoStart");
  Reload();
  ProfileOf(2003).SetDefaultAutostart(false);
  ProfileOf(2003).SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(NamesOf(2003), kHeaders);
}

TEST_F(AutoStartLists, HandOutWhatWasAddedAsSoonAsItIsConfirmed) {
  const auto dropped = store_.CreateAutoStartItem(2004);
  const size_t before = ListOf(2004).size();
  const auto added = Add(2004, L"Clock");
  const AutoStartTable list = ListOf(2004);
  EXPECT_EQ(list.size(), before + 1);
  EXPECT_EQ(list.at(static_cast<uint32_t>(added->fields.id)), added);
  EXPECT_FALSE(list.contains(static_cast<uint32_t>(dropped->fields.id))) << "nobody confirmed it";
  EXPECT_FALSE(ListOf(2003).contains(static_cast<uint32_t>(added->fields.id))) << "another profile's";
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT count(*), sum(Name = 'Clock') FROM AutoStart WHERE ProfileId = 2004"), "9|1");
}

TEST_F(AutoStartLists, SaveOnceWhatStandsInTheTableToo) {
  const auto added = Add(2004, L"Clock");
  tables_.autoStartItems[static_cast<uint32_t>(added->fields.id)] = added;
  SaveSucceeds();
  EXPECT_THAT(report_.changes, ElementsAre(RecordChange{RecordKind::AutoStartItem,
                                                        static_cast<uint32_t>(added->fields.id), ChangeState::New}));
  EXPECT_EQ(Sql("SELECT count(*) FROM AutoStart WHERE Name = 'Clock'"), "1");
}

TEST_F(AutoStartLists, AnEntryAddedToAnInheritedOneStoresTheWholeList) {
  Add(2003, L"Clock");
  ListOf(2003);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT count(*), sum(RecordType = 1), sum(Name = 'Clean up'), sum(Name = 'Clock') FROM AutoStart "
                "WHERE ProfileId = 2003"),
            "6|4|1|1");
}

TEST_F(AutoStartLists, StoreEqualEntriesInTheirOrder) {
  const auto namesOf = [this](uint32_t profileId) {
    return Sql("SELECT group_concat(Name) FROM (SELECT Name FROM AutoStart WHERE RecordType = 2 AND ProfileId = " +
               std::to_string(profileId) + " ORDER BY Phase, ItemOrder, Id)");
  };
  Sql("INSERT INTO AutoStart (ProfileId, Phase, ItemOrder, RecordType, Name) VALUES (2000, 1600, 1, 2, 'Second')");
  Reload();
  const auto added = Add(2003, L"Added");
  added->fields.phase = 1600;
  const auto second = AutoStartOf(2003, L"Second");
  second->fields.program = L"changed";
  second->SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(namesOf(2003), "Clean up,Second,Added");
}

TEST_F(AutoStartLists, AnEntryAddedAndRemovedAgainNeverWas) {
  const std::string before = FileBytes(file_);
  const auto added = Add(2003, L"Clock");
  ListOf(2003);
  added->SetState(ChangeState::Removed);
  tables_.autoStartItems[static_cast<uint32_t>(added->fields.id)] = added;
  AutoStartTable own;
  EXPECT_FALSE(store_.LoadOwnAutoStart(2003, own));
  SaveSucceeds();
  EXPECT_THAT(report_.changes, IsEmpty());
  EXPECT_TRUE(FileBytes(file_) == before);
}

TEST_F(AutoStartLists, AreTheProfilesOwnWithAnAddedEntryAndCanBeCopied) {
  Add(2003, L"Clock");
  AutoStartTable own;
  ASSERT_TRUE(store_.LoadOwnAutoStart(2003, own));
  EXPECT_THAT(own, testing::SizeIs(6));
  std::shared_ptr<Profile> created;
  ASSERT_EQ(store_.CreateProfile(created), Failure());
  created->SetName(L"Fresh");
  created->SetState(ChangeState::New);
  tables_.profiles[created->GetProfileId()] = created;
  ASSERT_TRUE(store_.CopyLists(2003, created->GetProfileId()));
  SaveSucceeds();
  EXPECT_EQ(NamesOf(created->GetProfileId()), NamesOf(2003));
  EXPECT_EQ(Sql("SELECT count(*) FROM AutoStart WHERE Name = 'Clock'"), "2");
}

TEST_F(AutoStartLists, OfANewProfileThatIsDroppedForgetWhatWasAdded) {
  std::shared_ptr<Profile> created;
  ASSERT_EQ(store_.CreateProfile(created), Failure());
  const uint32_t id = created->GetProfileId();
  Add(id, L"Clock");
  created.reset();
  ASSERT_EQ(store_.CreateProfile(created), Failure());
  ASSERT_EQ(created->GetProfileId(), id) << "it is given out again";
  for (const auto& [number, item] : ListOf(id)) EXPECT_NE(item->fields.name, L"Clock");
}

TEST_F(AutoStartLists, AreForgottenWithTheChanges) {
  Add(2004, L"Clock");
  store_.DiscardChanges();
  Reload();
  for (const auto& [id, item] : ListOf(2004)) EXPECT_NE(item->fields.name, L"Clock");
  const std::string before = FileBytes(file_);
  SaveSucceeds();
  EXPECT_TRUE(FileBytes(file_) == before);
}
