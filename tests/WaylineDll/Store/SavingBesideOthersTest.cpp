// Two programs on one settings database: while one has a sheet open, the other stores what it likes.
#include <sqlite3.h>

#include <memory>

#include "tests/WaylineDll/Store/StoreTest.h"

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class SavingBesideOthers : public LoadedStoreTest {
 protected:
  std::vector<std::wstring> Logged() const {
    std::vector<std::wstring> lines;
    for (const auto& message : log_.Messages()) lines.push_back(message.text);
    return lines;
  }

  // Saves, which succeeds but for this.
  void SaveLoses(const std::vector<std::wstring>& lost) {
    ASSERT_EQ(store_.Save(tables_, report_), Failure());
    EXPECT_EQ(report_.lost, lost);
  }
};

std::vector<std::wstring> RemovedMeanwhile(const std::wstring& name) {
  return {L"The login profile \"" + name +
          L"\" was removed by another program meanwhile. What was changed in it could not be saved."};
}

}  // namespace

TEST_F(SavingBesideOthers, WhatTheUserDidNotTouchStaysAsOthersStoredIt) {
  ProfileOf(2002).SetDurationTime(600s);
  ProfileOf(2002).SetState(ChangeState::Changed);
  Sql("UPDATE Profiles SET HelpURL = 'https://new.example.com', UserId = 'b.sample' WHERE ProfileId = 2002");
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT DurationTime, HelpURL, UserId FROM Profiles WHERE ProfileId = 2002"),
            "600|https://new.example.com|b.sample");
  EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(SavingBesideOthers, DefaultsThatChangeMeanwhileAreNotPinnedToTheirOldValues) {
  ProfileOf(2001).SetState(ChangeState::Changed);  // it only looks changed
  Sql("UPDATE Profiles SET DurationTime = 600 WHERE ProfileId = 1");
  const std::string before = FileBytes(file_);
  SaveSucceeds();
  EXPECT_THAT(report_.changes, IsEmpty());
  EXPECT_TRUE(FileBytes(file_) == before);
}

TEST_F(SavingBesideOthers, AnOverridePinsWhatTheUserSawUnlessTheProfileHasGotAValueOfItsOwn) {
  ProfileOf(2001).SetDefaultTimeouts(false);
  ProfileOf(2001).SetState(ChangeState::Changed);
  Sql("UPDATE Profiles SET DurationTime = 600 WHERE ProfileId = 1;"
      "UPDATE Profiles SET WarnTime = 90 WHERE ProfileId = 2001");
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT DurationTime, WarnTime FROM Profiles WHERE ProfileId = 2001"), "14400|90");
}

TEST_F(SavingBesideOthers, AValueThatBothChangedIsTheUsersAndTheLogSaysSo) {
  ProfileOf(2002).SetDurationTime(600s);
  ProfileOf(2002).SetWarnTime(30s);
  ProfileOf(2002).SetUserId(L"same");
  ProfileOf(2002).SetState(ChangeState::Changed);
  PreferenceOf(2004, PreferenceId::VpnMtu)->SetValue(1480);
  const auto notes = AutoStartOf(2004, L"Notes");
  notes->fields.delaySeconds = 5;
  notes->SetState(ChangeState::Changed);
  const auto config = store_.LoadConfig(2004, false);
  config->fields.manualProxy = L"mine:1";
  config->SetState(ChangeState::Changed);
  Sql("UPDATE Profiles SET DurationTime = 900, UserId = 'same' WHERE ProfileId = 2002;"
      "UPDATE Preferences SET State = 1481, Visible = 0 WHERE ProfileId = 2004 AND PreferenceId = 1477;"
      "UPDATE AutoStart SET DelaySeconds = 7, Parameters = '/other' WHERE Name = 'Notes';"
      "UPDATE ConfigSettings SET ManualProxy = 'other:1', Dns1 = '9.9.9.9' WHERE ProfileId = 2004 AND Automatic = 0");
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT DurationTime, WarnTime FROM Profiles WHERE ProfileId = 2002"), "600|30");
  EXPECT_EQ(Sql("SELECT State, Visible FROM Preferences WHERE ProfileId = 2004 AND PreferenceId = 1477"), "1480|0");
  EXPECT_EQ(Sql("SELECT DelaySeconds, Parameters FROM AutoStart WHERE Name = 'Notes'"), "5|/other");
  EXPECT_EQ(Sql("SELECT ManualProxy, Dns1 FROM ConfigSettings WHERE ProfileId = 2004 AND Automatic = 0"),
            "mine:1|9.9.9.9");
  const std::wstring rest = L" was changed by another program too; the user's value replaces it";
  EXPECT_THAT(
      Logged(),
      ElementsAre(L"Profile 2002: DurationTime" + rest, L"Preference 1477 of profile 2004: State" + rest,
                  L"Autostart entry " + std::to_wstring(notes->fields.id) + L" of profile 2004: DelaySeconds" + rest,
                  L"Proxy configuration of profile 2004: ManualProxy" + rest));
}

TEST_F(SavingBesideOthers, RowsThatOthersRemovedAreThereAgainWhereTheUserChangedThem) {
  PreferenceOf(2004, PreferenceId::AutoConnect)->SetValue(Preference::kOff);
  const auto notes = AutoStartOf(2004, L"Notes");
  notes->fields.delaySeconds = 5;
  notes->SetState(ChangeState::Changed);
  AutoStartOf(2004, L"Goodbye")->SetState(ChangeState::Removed);
  const auto config = store_.LoadConfig(2004, false);
  config->fields.manualProxy = L"mine:1";
  config->SetState(ChangeState::Changed);
  Sql("DELETE FROM Preferences WHERE ProfileId = 2004; DELETE FROM AutoStart WHERE ProfileId = 2004;"
      "DELETE FROM ConfigSettings WHERE ProfileId = 2004");
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT group_concat(PreferenceId || ':' || State) FROM Preferences WHERE ProfileId = 2004"), "1014:1");
  EXPECT_EQ(Sql("SELECT group_concat(Name || ':' || DelaySeconds) FROM AutoStart WHERE ProfileId = 2004"), "Notes:5");
  EXPECT_EQ(Sql("SELECT ManualProxy, AutoProxyUrl FROM ConfigSettings WHERE ProfileId = 2004"),
            "mine:1|http://proxy.example.net/office.pac");
}

TEST_F(SavingBesideOthers, TheNumberOfARemovedEntryMayBeAnothersByNow) {
  const auto notes = AutoStartOf(2004, L"Notes");
  notes->fields.delaySeconds = 5;
  notes->SetState(ChangeState::Changed);
  const auto goodbye = AutoStartOf(2004, L"Goodbye");
  goodbye->SetState(ChangeState::Removed);
  Sql("DELETE FROM AutoStart WHERE ProfileId = 2004");
  for (const int32_t id : {notes->fields.id, goodbye->fields.id}) {
    Sql("INSERT INTO AutoStart (Id, ProfileId, Phase, ItemOrder, RecordType, Name) VALUES (" + std::to_string(id) +
        ", 1, 700, 9, 2, 'Stranger')");
  }
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT count(*), sum(ifnull(DelaySeconds, 0)) FROM AutoStart WHERE Name = 'Stranger'"), "2|0");
  EXPECT_EQ(Sql("SELECT DelaySeconds FROM AutoStart WHERE ProfileId = 2004 AND Name = 'Notes'"), "5");
}

TEST_F(SavingBesideOthers, ARemovedProfileCostsOnlyWhatBelongsToIt) {
  ProfileOf(2001).SetUserId(L"other");
  ProfileOf(2001).SetState(ChangeState::Changed);
  ProfileOf(2004).SetName(L"Office");
  ProfileOf(2004).SetState(ChangeState::Renamed);
  PreferenceOf(2004, PreferenceId::AutoConnect)->SetValue(Preference::kOff);
  PreferenceOf(2001, PreferenceId::AutoConnect)->SetValue(Preference::kOn);
  Sql("DELETE FROM Profiles WHERE ProfileId = 2004");
  SaveLoses(RemovedMeanwhile(L"Office"));
  EXPECT_THAT(report_.changes, ElementsAre(RecordChange{RecordKind::Profile, 2001, ChangeState::Changed},
                                           RecordChange{RecordKind::Preference, 1014, ChangeState::Changed}));
  EXPECT_EQ(Sql("SELECT UserId FROM Profiles WHERE ProfileId = 2001"), "other");
  EXPECT_EQ(Sql("SELECT group_concat(ProfileId) FROM Preferences WHERE PreferenceId = 1014 AND ProfileId > 2000"),
            "2001,10001");
}

TEST_F(SavingBesideOthers, ARemovedProfileIsNamedAlsoWhenOnlyItsRowsWereChanged) {
  PreferenceOf(2004, PreferenceId::AutoConnect)->SetValue(Preference::kOff);
  Sql("DELETE FROM Profiles WHERE ProfileId = 2004");
  SaveLoses(RemovedMeanwhile(L"Z\u00fcrich Office"));
  EXPECT_EQ(Sql("SELECT count(*) FROM Preferences WHERE ProfileId = 2004"), "0");
}

TEST_F(SavingBesideOthers, AProfileThatBothRemovedIsNotMissed) {
  ProfileOf(2004).SetState(ChangeState::Removed);
  Sql("DELETE FROM Profiles WHERE ProfileId = 2004");
  SaveSucceeds();
  EXPECT_THAT(report_.changes, IsEmpty());
}

TEST_F(SavingBesideOthers, ANewProfileWhoseDefaultsAreGoneIsNamedAndLeftOut) {
  AddProfile(3000, 100);
  Profile& follower = AddProfile(3001, 100);
  follower.Columns().linkProfile = 3000;
  follower.SetName(L"Follower");
  ProfileOf(2001).SetUserId(L"other");
  ProfileOf(2001).SetState(ChangeState::Changed);
  Sql("DELETE FROM Profiles WHERE ProfileId IN (2002, 10001); DELETE FROM Profiles WHERE ProfileId = 100");
  const std::wstring rest =
      L"\" could not be saved: the defaults that it is to follow were removed by another program meanwhile.";
  SaveLoses({L"The login profile \"New" + rest, L"The login profile \"Follower" + rest});
  EXPECT_EQ(Sql("SELECT UserId FROM Profiles WHERE ProfileId = 2001"), "other");
  EXPECT_EQ(Sql("SELECT count(*) FROM Profiles WHERE ProfileId BETWEEN 3000 AND 3001"), "0");
}

TEST_F(SavingBesideOthers, AProfileThatOthersFollowByNowIsNotRemoved) {
  ProfileOf(2003).SetState(ChangeState::Removed);
  ProfileOf(2004).SetState(ChangeState::Removed);
  Sql("INSERT INTO Profiles (ProfileId, Name, LinkProfile) VALUES (2010, 'Follower', 2004)");
  SaveLoses({L"The login profile \"Z\u00fcrich Office\" could not be removed: other profiles follow it."});
  EXPECT_EQ(Sql("SELECT group_concat(ProfileId) FROM Profiles WHERE ProfileId IN (2003, 2004, 2010)"), "2004,2010");
}

TEST_F(SavingBesideOthers, AProfileThatIsConnectedByNowIsNotRemoved) {
  ProfileOf(2003).SetState(ChangeState::Removed);
  ProfileOf(2004).SetState(ChangeState::Removed);
  Sql("UPDATE ClientState SET Value = '2003' WHERE Name = 'ActiveProfile';"
      "UPDATE ClientState SET Value = '2' WHERE Name = 'ConnectionState'");
  EXPECT_EQ(store_.Save(tables_, report_), Failure());
  EXPECT_THAT(report_.lost, ElementsAre(L"The login profile \"Travel\" could not be removed: it is connected by now."));
  EXPECT_EQ(Sql("SELECT group_concat(ProfileId) FROM Profiles WHERE ProfileId IN (2003, 2004)"), "2003");
}

TEST_F(SavingBesideOthers, TheActiveProfileIsRemovedWhileNothingIsConnected) {
  ProfileOf(2001).SetState(ChangeState::Removed);
  Sql("UPDATE ClientState SET Value = '1' WHERE Name = 'ConnectionState'");
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT count(*) FROM Profiles WHERE ProfileId = 2001"), "0");
}

TEST_F(SavingBesideOthers, ProfilesAreRemovedThatOnlyFollowEachOtherByNow) {
  for (const auto& [follower, followed] : {std::pair{2002, 2003}, std::pair{2003, 2002}}) {
    ASSERT_EQ(store_.LoadProfiles(tables_.profiles), Failure());
    ProfileOf(2002).SetState(ChangeState::Removed);
    ProfileOf(2003).SetState(ChangeState::Removed);
    Sql("UPDATE Profiles SET LinkProfile = " + std::to_string(followed) +
        " WHERE ProfileId = " + std::to_string(follower));
    SaveSucceeds();
    EXPECT_EQ(Sql("SELECT count(*) FROM Profiles WHERE ProfileId IN (2002, 2003)"), "0");
    Sql("INSERT INTO Profiles (ProfileId, Name, LinkProfile) VALUES (2002, 'Again', 1), (2003, 'Again', 1)");
  }
}

TEST_F(SavingBesideOthers, ANewProfileWhoseIdIsTakenMovesWithItsRows) {
  std::shared_ptr<Profile> created;
  ASSERT_EQ(store_.CreateProfile(created), Failure());
  created->SetName(L"Mine");
  created->SetState(ChangeState::New);
  tables_.profiles[2006] = created;
  AddProfile(2007, 1).Columns().linkProfile = 2006;
  PreferenceOf(2006, PreferenceId::AutoConnect)->SetValue(Preference::kOn);
  const auto item = std::make_shared<AutoStartItem>(*AutoStartOf(2004, L"Notes"));
  item->fields.profileId = 2006;
  item->SetState(ChangeState::New);
  tables_.autoStartItems[77] = item;
  const auto config = store_.LoadConfig(2006, false);
  config->fields.manualProxy = L"mine:1";
  config->SetState(ChangeState::Changed);
  Sql("INSERT INTO Profiles (ProfileId, Name, LinkProfile) VALUES (2006, 'Theirs', 1);"
      "INSERT INTO Preferences VALUES (1014, 2006, 1, 1, 0)");
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT Name FROM Profiles WHERE ProfileId = 2006"), "Theirs");
  EXPECT_EQ(Sql("SELECT Name FROM Profiles WHERE ProfileId = 2008"), "Mine");
  EXPECT_EQ(Sql("SELECT Name, LinkProfile FROM Profiles WHERE ProfileId = 2007"), "New|2008");
  EXPECT_EQ(Sql("SELECT group_concat(ProfileId || ':' || State) FROM Preferences WHERE PreferenceId = 1014 AND "
                "ProfileId BETWEEN 2005 AND 2010"),
            "2006:1,2008:2");
  EXPECT_EQ(Sql("SELECT count(*) FROM AutoStart WHERE ProfileId = 2006"), "0");
  EXPECT_NE(Sql("SELECT count(*) FROM AutoStart WHERE ProfileId = 2008"), "0");
  EXPECT_EQ(Sql("SELECT ManualProxy FROM ConfigSettings WHERE ProfileId = 2008"), "mine:1");
  EXPECT_EQ(report_.changes.front(), (RecordChange{RecordKind::Profile, 2008, ChangeState::New}));
}

TEST_F(SavingBesideOthers, ANewProfileHasNothingOfTheOneThatHasTakenItsId) {
  std::shared_ptr<Profile> created;
  ASSERT_EQ(store_.CreateProfile(created), Failure());
  ASSERT_EQ(created->GetProfileId(), 2006u);
  Sql("INSERT INTO Profiles (ProfileId, Name) VALUES (2006, 'Theirs');"
      "INSERT INTO ConfigSettings (ProfileId, Automatic, Dns1) VALUES (2006, 0, '192.0.2.1'), (2006, 1, '192.0.2.2')");
  EXPECT_EQ(store_.LoadConfig(2006, false)->fields.dns1, L"");
  EXPECT_EQ(store_.LoadConfig(2006, true)->fields.dns1, L"");
}

TEST_F(SavingBesideOthers, ANewProfileDoesNotGetTheIdOfOneThatOthersMadeAndRemovedMeanwhile) {
  AddProfile(2006, 1);
  AddProfile(2007, 1);
  Sql("INSERT INTO Profiles (ProfileId, Name) VALUES (2007, 'Theirs'), (2008, 'Gone');"
      "DELETE FROM Profiles WHERE ProfileId = 2008");
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT group_concat(ProfileId || Name) FROM Profiles WHERE ProfileId BETWEEN 2006 AND 9999"),
            "2007Theirs,2009New,2010New");
}

TEST_F(SavingBesideOthers, ANewProfileKeepsAnIdThatOthersHadWhereNoOtherIsLeft) {
  AddProfile(2006, 1);
  Sql("WITH RECURSIVE Id(N) AS (SELECT 2006 UNION ALL SELECT N + 1 FROM Id WHERE N < 9999)"
      "INSERT INTO Profiles (ProfileId, Name) SELECT N, 'x' FROM Id;"
      "DELETE FROM Profiles WHERE ProfileId = 2006");
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT Name FROM Profiles WHERE ProfileId = 2006"), "New");
}

TEST_F(SavingBesideOthers, NothingIsSavedWhenNoIdIsLeftForANewProfile) {
  AddProfile(2006, 1);
  Sql("WITH RECURSIVE Id(N) AS (SELECT 2006 UNION ALL SELECT N + 1 FROM Id WHERE N < 9999)"
      "INSERT INTO Profiles (ProfileId, Name) SELECT N, 'x' FROM Id");
  SaveFails(L"Nothing was saved: there are as many login profiles as there can be.");
}

TEST_F(SavingBesideOthers, AnAutostartListThatOthersHaveStoredMeanwhileGetsWhatTheUserChanged) {
  const auto item = AutoStartOf(2003, L"Clean up");
  item->fields.name = L"Tidy up";
  item->SetState(ChangeState::Changed);
  Sql("INSERT INTO AutoStart (ProfileId, Phase, ItemOrder, RecordType, Name) VALUES (2003, 300, 0, 1, 'Theirs')");
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT group_concat(Name) FROM (SELECT Name FROM AutoStart WHERE ProfileId = 2003 ORDER BY Phase)"),
            "Theirs,Tidy up");
}

TEST_F(SavingBesideOthers, ANewProfileOfOthersIsNotTakenForTheOneThatTheyRemoved) {
  Sql("DELETE FROM Profiles WHERE ProfileId = 2005");
  ASSERT_EQ(store_.LoadProfiles(tables_.profiles), Failure());
  std::shared_ptr<Profile> theirs;
  ASSERT_EQ(store_.CreateProfile(theirs), Failure());
  EXPECT_NE(theirs->GetProfileId(), 2005u) << "others may be changing that one";
}

TEST_F(SavingBesideOthers, AProfileThatFollowsOthersFromNowOnDoesNotKeepItsOldDefaults) {
  ProfileOf(2003).Columns().linkProfile = 1;
  ProfileOf(2003).SetState(ChangeState::Changed);
  ProfileOf(2004).SetState(ChangeState::Removed);
  ProfileOf(2000).SetState(ChangeState::Removed);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT count(*) FROM Profiles WHERE ProfileId IN (2000, 2004)"), "0");
  EXPECT_EQ(Sql("SELECT LinkProfile FROM Profiles WHERE ProfileId = 2003"), "1");
}

TEST_F(SavingBesideOthers, AProfileWhoseNewDefaultsAreGoneIsNamedAndStaysAsItWas) {
  ProfileOf(2003).Columns().linkProfile = 2005;
  ProfileOf(2003).SetState(ChangeState::Changed);
  ProfileOf(2001).SetUserId(L"other");
  ProfileOf(2001).SetState(ChangeState::Changed);
  Sql("DELETE FROM Profiles WHERE ProfileId = 2005");
  SaveLoses(
      {L"The login profile \"Travel\" could not be saved: the defaults that it is to follow were removed by another "
       L"program meanwhile."});
  EXPECT_EQ(Sql("SELECT LinkProfile FROM Profiles WHERE ProfileId = 2003"), "2000");
  EXPECT_EQ(Sql("SELECT UserId FROM Profiles WHERE ProfileId = 2001"), "other");
}

TEST_F(SavingBesideOthers, AProfileThatMovedIsCalledByItsName) {
  std::shared_ptr<Profile> created;
  ASSERT_EQ(store_.CreateProfile(created), Failure());
  created->SetName(L"Mine");
  created->SetState(ChangeState::New);
  tables_.profiles[2006] = created;
  Sql("INSERT INTO Profiles (ProfileId, Name, LinkProfile) VALUES (2006, 'Theirs', 1);"
      "CREATE TRIGGER Refuse BEFORE INSERT ON Profiles BEGIN SELECT RAISE(ABORT, 'it is not wanted'); END");
  SaveFails(L"Nothing was saved, because the login profile \"Mine\" could not be stored: it is not wanted.");
}
