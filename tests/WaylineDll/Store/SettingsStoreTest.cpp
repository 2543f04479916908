#include "WaylineDll/Store/SettingsStore.h"

#include <sqlite3.h>

#include "Database/Profiles/BuiltInPreferences.h"
#include "tests/WaylineDll/Store/StoreTest.h"
#include "WaylineDll/Store/OpenConnection.h"

using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class SettingsStoreTest : public LoadedStoreTest {
 protected:
  static void ExpectBuiltIn(const PreferenceTable& preferences) {
    ASSERT_EQ(preferences.size(), BuiltInPreferences().size());
    for (const BuiltInPreference& builtIn : BuiltInPreferences()) {
      EXPECT_EQ(preferences.at(builtIn.id)->GetValue(), builtIn.value);
      EXPECT_EQ(preferences.at(builtIn.id)->GetState(), ChangeState::Unchanged);
    }
  }
};

}  // namespace

TEST_F(SettingsStoreTest, LoadsEveryProfileWithTheValuesInForce) {
  EXPECT_THAT(tables_.profiles, SizeIs(9));
  // Travel follows Branch Offices, which follows the defaults.
  const Profile& travel = ProfileOf(2003);
  EXPECT_EQ(travel.GetName(), L"Travel");
  EXPECT_EQ(travel.GetAccount(), L"Example Branches");
  EXPECT_EQ(travel.GetDurationTime(), 14400s);
  EXPECT_EQ(travel.GetSMIdleTime(), 0s);
  EXPECT_EQ(travel.GetState(), ChangeState::Unchanged);
}

TEST_F(SettingsStoreTest, ValuesThatNobodyStoresAreTheDefaults) {
  EXPECT_EQ(ProfileOf(2001).Columns().stValidUnits, L'M');
  EXPECT_TRUE(ProfileOf(2001).Columns().smLpeEnabled);
}

TEST_F(SettingsStoreTest, ReopensWhatItCreated) {
  file_ = folder_.File(L"Other.db");
  { ASSERT_EQ(SettingsStore().Open(file_), Failure()); }
  Sql("UPDATE Profiles SET Name = 'Changed' WHERE ProfileId = 2001");
  SettingsStore again;
  ASSERT_EQ(again.Open(file_), Failure());
  ProfileTable profiles;
  ASSERT_EQ(again.LoadProfiles(profiles), Failure());
  EXPECT_EQ(profiles.at(2001)->GetName(), L"Changed");
}

TEST_F(SettingsStoreTest, LoadingRefusesLinksThatHaveNoEnd) {
  Sql("DROP TRIGGER ProfileUpdateKeepsChains; UPDATE Profiles SET LinkProfile = 2001 WHERE ProfileId = 1");
  const size_t before = tables_.profiles.size();
  EXPECT_UNUSABLE(store_.LoadProfiles(tables_.profiles),
                  L"the settings database is damaged (the links of profile 1 have no end)");
  EXPECT_EQ(tables_.profiles.size(), before);
  EXPECT_EQ(store_.GetActiveTimeouts().session, 0s);
}

TEST_F(SettingsStoreTest, LoadingWaitsForALockedFileAndThenSaysSo) {
  const FileLock otherProgram(file_, "BEGIN EXCLUSIVE");
  EXPECT_UNUSABLE(store_.LoadProfiles(tables_.profiles), L"the settings database is in use by another program");
}

TEST_F(SettingsStoreTest, ActiveTimeoutsAreTheLimitsInForce) {
  EXPECT_EQ(store_.GetActiveProfileId(), 2001u);
  const ProfileTimeouts timeouts = store_.GetActiveTimeouts();
  EXPECT_EQ(timeouts.session, 28800s);
  EXPECT_EQ(timeouts.idle, 3600s);
  EXPECT_EQ(timeouts.threshold, 30s * 60);
}

TEST_F(SettingsStoreTest, WithoutActiveProfileThereAreNoTimeouts) {
  Sql("DELETE FROM ClientState");
  EXPECT_EQ(store_.GetActiveProfileId(), 0u);
  const ProfileTimeouts timeouts = store_.GetActiveTimeouts();
  EXPECT_EQ(timeouts.session, 0s);
  EXPECT_EQ(timeouts.idle, 0s);
  EXPECT_EQ(timeouts.threshold, 0s);
}

TEST_F(SettingsStoreTest, LoadsTheTwoProxyConfigurationsOfAProfile) {
  const auto found = store_.LoadConfig(2004, true);
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->fields.profileId, 2004);
  EXPECT_TRUE(found->fields.automatic);
  EXPECT_EQ(found->fields.autoProxyUrl, L"leave");
  const auto entered = store_.LoadConfig(2004, false);
  ASSERT_NE(entered, nullptr);
  EXPECT_FALSE(entered->fields.automatic);
  EXPECT_EQ(entered->fields.proxyExceptions, L"intranet.example.net;192.0.2.0");
}

TEST_F(SettingsStoreTest, LoadsThePreferencesThatAProfileStores) {
  PreferenceTable preferences;
  EXPECT_TRUE(store_.LoadPreferences(2004, preferences));
  EXPECT_THAT(preferences, SizeIs(27));
  const PreferenceFields& tray = preferences.at(PreferenceId::MinimizeToTray)->Fields();
  EXPECT_EQ(tray.preferenceId, PreferenceId::MinimizeToTray);
  EXPECT_EQ(tray.profileId, 2004u);
  EXPECT_EQ(tray.state, Preference::kOn);
  EXPECT_TRUE(tray.visible);
  EXPECT_FALSE(tray.ipsecRequired);
  EXPECT_TRUE(preferences.at(PreferenceId::VpnMtu)->Fields().ipsecRequired);
  EXPECT_EQ(preferences.at(PreferenceId::VpnMtu)->GetState(), ChangeState::Unchanged);
}

TEST_F(SettingsStoreTest, PreferencesThatAProfileDoesNotStoreAreThoseOfTheNearestLink) {
  Sql("DELETE FROM Preferences WHERE ProfileId = 2000 AND PreferenceId <> 1477;"
      "UPDATE Preferences SET State = 1481 WHERE ProfileId = 2000;"
      "INSERT INTO Preferences VALUES (1014, 2003, 2, 1, 0)");
  PreferenceTable preferences;
  EXPECT_TRUE(store_.LoadPreferences(2003, preferences));
  EXPECT_THAT(preferences, SizeIs(27));
  EXPECT_EQ(preferences.at(PreferenceId::AutoConnect)->GetValue(), Preference::kOn) << "its own";
  EXPECT_EQ(preferences.at(PreferenceId::VpnMtu)->GetValue(), 1481) << "of Branch Offices";
  EXPECT_EQ(preferences.at(PreferenceId::IPSecAttempts)->GetValue(), 1508) << "of the defaults";
  for (const auto& [id, preference] : preferences) EXPECT_EQ(preference->Fields().profileId, 2003u);
}

TEST_F(SettingsStoreTest, OwnPreferencesAreOnlyThoseThatAProfileStores) {
  Sql("INSERT INTO Preferences (ProfileId, PreferenceId, State, Visible, IPSecRequired) VALUES (2003, 1014, 2, 1, 0),"
      "(2003, 1477, 1482, 1, 0)");
  PreferenceTable preferences;
  EXPECT_TRUE(store_.LoadOwnPreferences(2003, preferences));
  EXPECT_THAT(preferences, SizeIs(2));
  EXPECT_EQ(preferences.at(PreferenceId::VpnMtu)->GetValue(), 1482);
  EXPECT_FALSE(store_.LoadOwnPreferences(2001, preferences));
  EXPECT_THAT(preferences, IsEmpty());
}

TEST_F(SettingsStoreTest, AnUnknownProfileHasThePreferencesThatAreBuiltIn) {
  PreferenceTable preferences = {{PreferenceId::AutoConnect, nullptr}};
  EXPECT_TRUE(store_.LoadPreferences(4711, preferences));
  ExpectBuiltIn(preferences);
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(SettingsStoreTest, LinksWithoutAnEndAreFollowedOnce) {
  PreferenceTable usual;
  ASSERT_TRUE(store_.LoadPreferences(2001, usual));
  Sql("DROP TRIGGER ProfileUpdateKeepsChains; UPDATE Profiles SET LinkProfile = 2001 WHERE ProfileId = 1");
  PreferenceTable preferences;
  EXPECT_TRUE(store_.LoadPreferences(2001, preferences));
  EXPECT_EQ(preferences.size(), usual.size());
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(SettingsStoreTest, PreferencesThatCannotBeReadAreLoggedAndNotThere) {
  Sql("DROP TABLE Preferences");
  PreferenceTable preferences = {{PreferenceId::AutoConnect, nullptr}};
  EXPECT_FALSE(store_.LoadPreferences(2001, preferences));
  EXPECT_THAT(preferences, IsEmpty());
  ASSERT_FALSE(log_.Messages().empty());
  EXPECT_THAT(ToUtf8(log_.Messages()[0].text), testing::HasSubstr("SQL logic error - select PreferenceId"));
  EXPECT_FALSE(store_.LoadOwnPreferences(2001, preferences));
}

TEST_F(SettingsStoreTest, PreferencesThatAnotherProgramLocksAreLoggedAndNotThere) {
  const FileLock otherProgram(file_, "BEGIN EXCLUSIVE");
  PreferenceTable preferences = {{PreferenceId::AutoConnect, nullptr}};
  EXPECT_FALSE(store_.LoadPreferences(2001, preferences));
  EXPECT_THAT(preferences, IsEmpty());
  ASSERT_FALSE(log_.Messages().empty());
  EXPECT_THAT(ToUtf8(log_.Messages()[0].text), testing::HasSubstr("5 - database is locked"));
}

TEST_F(SettingsStoreTest, SetPreferenceChangesWhatTheProfileStores) {
  OpenSample();
  const std::string otherRows =
      "SELECT count(*), sum(State) FROM Preferences WHERE NOT (ProfileId = 2004 AND PreferenceId = 1014)";
  const std::string before = Sql(otherRows);
  EXPECT_EQ(store_.SetPreference(2004, PreferenceId{1014}, Preference::kOn), std::nullopt);
  EXPECT_EQ(Sql("SELECT State FROM Preferences WHERE ProfileId = 2004 AND PreferenceId = 1014"), "2");
  EXPECT_EQ(store_.SetPreference(2004, PreferenceId{1014}, Preference::kOff), std::nullopt);
  EXPECT_EQ(Sql("SELECT State FROM Preferences WHERE ProfileId = 2004 AND PreferenceId = 1014"), "1");
  EXPECT_EQ(Sql(otherRows), before);
}

TEST_F(SettingsStoreTest, SetPreferenceStoresAnInheritedOneAsTheProfilesOwn) {
  EXPECT_EQ(store_.SetPreference(2001, PreferenceId::UdpEncapsulation, Preference::kOff), std::nullopt);
  EXPECT_EQ(Sql("SELECT PreferenceId, State, Visible, IPSecRequired FROM Preferences WHERE ProfileId = 2001"),
            "1044|1|1|1");
  EXPECT_EQ(Sql("SELECT State FROM Preferences WHERE ProfileId = 1 AND PreferenceId = 1044"), "2");
}

TEST_F(SettingsStoreTest, SetPreferenceNeedsAProfileThatIsStored) {
  const std::string before = FileBytes(file_);
  for (const uint32_t id : {0u, 4711u}) {
    EXPECT_EQ(store_.SetPreference(id, PreferenceId::AutoConnect, Preference::kOn),
              Failure(L"Nothing was saved: there is no such login profile."));
  }
  EXPECT_TRUE(FileBytes(file_) == before);
}

TEST_F(SettingsStoreTest, WhatIsSetWhileASheetIsOpenIsShownUnlessTheUserHasChangedIt) {
  PreferenceTable preferences;
  ASSERT_TRUE(store_.LoadPreferences(2001, preferences));
  preferences.at(PreferenceId::VpnHealthCheck)->SetValue(Preference::kOn);
  EXPECT_EQ(store_.SetPreference(2001, PreferenceId::AutoConnect, Preference::kOn), std::nullopt);
  EXPECT_EQ(store_.SetPreference(2001, PreferenceId::VpnHealthCheck, Preference::kOff), std::nullopt);
  EXPECT_EQ(preferences.at(PreferenceId::AutoConnect)->GetValue(), Preference::kOn);
  EXPECT_EQ(preferences.at(PreferenceId::AutoConnect)->GetState(), ChangeState::Unchanged);
  EXPECT_EQ(preferences.at(PreferenceId::VpnHealthCheck)->GetValue(), Preference::kOn);
  SaveSucceeds();
  EXPECT_THAT(report_.changes, SizeIs(1));
  EXPECT_THAT(log_.Messages(), IsEmpty()) << "what the client has set itself was changed by no other program";
  EXPECT_EQ(Sql("SELECT group_concat(PreferenceId || ':' || State) FROM Preferences WHERE ProfileId = 2001"),
            "1014:2,1483:2");
}

TEST_F(SettingsStoreTest, ItsConnectionWaitsForOtherPrograms) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(StoreConnection(), "PRAGMA busy_timeout", -1, &statement, nullptr);
  const StatementHandle owner(statement);
  ASSERT_EQ(sqlite3_step(statement), SQLITE_ROW);
  EXPECT_EQ(sqlite3_column_int(statement, 0), kBusyTimeout);
}

TEST_F(SettingsStoreTest, SetPreferenceSaysWhyItFails) {
  const FileLock otherProgram(file_, "BEGIN IMMEDIATE");
  EXPECT_EQ(store_.SetPreference(2001, PreferenceId::AutoConnect, Preference::kOn),
            Failure(L"Nothing was saved: the settings database is in use by another program."));
}

TEST_F(SettingsStoreTest, HandsOutTheSameRecordsUntilTheyAreSavedOrDiscarded) {
  PreferenceTable first;
  ASSERT_TRUE(store_.LoadPreferences(2004, first));
  first.at(PreferenceId::AutoConnect)->SetValue(Preference::kOff);
  PreferenceTable other;
  ASSERT_TRUE(store_.LoadPreferences(2001, other));
  PreferenceTable again;
  ASSERT_TRUE(store_.LoadPreferences(2004, again));
  EXPECT_EQ(again, first);
  EXPECT_EQ(store_.LoadConfig(2004, false), store_.LoadConfig(2004, false));
  AutoStartTable items;
  AutoStartTable sameItems;
  ASSERT_TRUE(store_.LoadAutoStart(2004, items));
  ASSERT_TRUE(store_.LoadAutoStart(2004, sameItems));
  EXPECT_EQ(items, sameItems);

  store_.DiscardChanges();
  ASSERT_TRUE(store_.LoadPreferences(2004, again));
  EXPECT_EQ(again.at(PreferenceId::AutoConnect)->GetValue(), Preference::kOn);
  PreferenceTable fresh;
  ASSERT_TRUE(store_.LoadPreferences(2004, fresh));
  EXPECT_NE(fresh, again) << "nobody edits them";
}

TEST_F(SettingsStoreTest, LoadingFailsWhereTheActiveProfileCannotBeRead) {
  Sql("DROP TRIGGER ProfileDeleteTakesItsRows; DROP TABLE ClientState");
  EXPECT_UNUSABLE(store_.LoadProfiles(tables_.profiles), L"the settings database is incomplete");
}

TEST_F(SettingsStoreTest, LoadingTheProfilesAgainForgetsWhatWasChanged) {
  PreferenceTable preferences;
  ASSERT_TRUE(store_.LoadPreferences(2004, preferences));
  preferences.at(PreferenceId::AutoConnect)->SetValue(Preference::kOff);
  ASSERT_EQ(store_.LoadProfiles(tables_.profiles), Failure());
  ASSERT_TRUE(store_.LoadPreferences(2004, preferences));
  EXPECT_EQ(preferences.at(PreferenceId::AutoConnect)->GetValue(), Preference::kOn);
}

TEST_F(SettingsStoreTest, APreferenceThatNobodyStoresIsBuiltIn) {
  Sql("DELETE FROM Preferences WHERE PreferenceId IN (1522, 1477, 1014)");
  PreferenceTable preferences;
  ASSERT_TRUE(store_.LoadPreferences(2001, preferences));
  EXPECT_THAT(preferences, SizeIs(27));
  EXPECT_EQ(preferences.at(PreferenceId::UseSavedCertificate)->GetValue(), Preference::kOn);
  EXPECT_EQ(preferences.at(PreferenceId::VpnMtu)->GetValue(), 0);
  EXPECT_EQ(preferences.at(PreferenceId::AutoConnect)->GetValue(), Preference::kOff);
  EXPECT_EQ(preferences.at(PreferenceId::AutoConnect)->Fields().profileId, 2001u);
  EXPECT_TRUE(preferences.at(PreferenceId::AutoConnect)->Fields().visible);
}

TEST_F(SettingsStoreTest, AChangedPreferenceCountsAsTheUsersOwn) {
  PreferenceTable preferences;
  ASSERT_TRUE(store_.LoadPreferences(2001, preferences));
  preferences.at(PreferenceId::AutoConnect)->SetValue(Preference::kOn);
  PreferenceTable own;
  ASSERT_TRUE(store_.LoadOwnPreferences(2001, own));
  EXPECT_THAT(own, SizeIs(1));
  EXPECT_EQ(own.at(PreferenceId::AutoConnect), preferences.at(PreferenceId::AutoConnect));
}

TEST_F(SettingsStoreTest, AProfileWithoutProxyConfigurationHasAnEmptyOne) {
  for (const bool automatic : {false, true}) {
    const auto config = store_.LoadConfig(2003, automatic);
    ASSERT_NE(config, nullptr);
    EXPECT_EQ(config->fields.profileId, 2003);
    EXPECT_EQ(config->fields.automatic, automatic);
    EXPECT_EQ(config->fields.manualProxy, L"");
    EXPECT_EQ(config->GetState(), ChangeState::Unchanged);
  }
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(SettingsStoreTest, AProxyConfigurationThatCannotBeReadIsLoggedAndNull) {
  Sql("DROP TABLE ConfigSettings");
  EXPECT_EQ(store_.LoadConfig(2004, false), nullptr);
  EXPECT_FALSE(log_.Messages().empty());
}

TEST_F(SettingsStoreTest, AnAutostartListIsTheProfilesOwnOrACopyOfThatOfItsDefaults) {
  AutoStartTable own;
  ASSERT_TRUE(store_.LoadAutoStart(2004, own));
  EXPECT_THAT(own, SizeIs(8));
  EXPECT_EQ(own.begin()->second->fields.profileId, 2004);

  AutoStartTable copied;
  ASSERT_TRUE(store_.LoadAutoStart(2003, copied));
  EXPECT_THAT(copied, SizeIs(5));
  std::vector<std::wstring> programs;
  for (const auto& [id, item] : copied) {
    EXPECT_EQ(item->fields.profileId, 2003);
    EXPECT_EQ(static_cast<uint32_t>(item->fields.id), id);
    EXPECT_FALSE(own.contains(id));
    if (item->fields.recordType == AutoStartRecordType::Program) programs.push_back(item->fields.name);
  }
  EXPECT_THAT(programs, testing::ElementsAre(L"Clean up"));

  AutoStartTable others;
  ASSERT_TRUE(store_.LoadAutoStart(2001, others));
  for (const auto& [id, item] : others) EXPECT_FALSE(copied.contains(id)) << "each has numbers of its own";
}

TEST_F(SettingsStoreTest, AnAutostartListThatCannotBeReadIsLoggedAndNotThere) {
  Sql("DROP TABLE AutoStart");
  AutoStartTable items = {{1, nullptr}};
  EXPECT_FALSE(store_.LoadAutoStart(2004, items));
  EXPECT_THAT(items, IsEmpty());
  EXPECT_FALSE(log_.Messages().empty());
}

TEST_F(SettingsStoreTest, AnActiveProfileThatCannotBeReadIsLoggedAndStaysTheLastKnown) {
  {
    const FileLock otherProgram(file_, "BEGIN EXCLUSIVE");
    EXPECT_EQ(store_.GetActiveProfileId(), 2001u);
  }
  ASSERT_FALSE(log_.Messages().empty());
  EXPECT_EQ(log_.Messages().back().text,
            L"The active profile cannot be read: the settings database is in use by another program");
  Sql("DELETE FROM ClientState");
  EXPECT_EQ(store_.GetActiveProfileId(), 0u);
}

TEST_F(SettingsStoreTest, ANewProfileStartsWithWhatIsInForceForItsDefaults) {
  std::shared_ptr<Profile> created;
  ASSERT_EQ(store_.CreateProfile(created), Failure());
  EXPECT_EQ(created->GetProfileId(), 2006u) << "10001 is above those that have preferences of their own";
  EXPECT_EQ(created->GetLinkProfile(), 1u) << "as the active profile";
  EXPECT_EQ(created->GetName(), L"");
  EXPECT_EQ(created->GetDurationTime(), 14400s);
  EXPECT_EQ(created->GetSMIdleTime(), 3600s);
  EXPECT_EQ(created->GetState(), ChangeState::Unchanged);
  std::shared_ptr<Profile> second;
  ASSERT_EQ(store_.CreateProfile(second), Failure());
  EXPECT_EQ(second->GetProfileId(), 2007u);
}

TEST_F(SettingsStoreTest, ANewProfileFollowsTheFirstDefaultsWhereTheActiveProfileHasNone) {
  for (const char* active : {"DELETE FROM ClientState", "INSERT INTO ClientState VALUES ('ActiveProfile', '4711')",
                             "UPDATE ClientState SET Value = '1' WHERE Name = 'ActiveProfile'"}) {
    Sql(active);
    std::shared_ptr<Profile> created;
    ASSERT_EQ(store_.CreateProfile(created), Failure());
    EXPECT_EQ(created->GetLinkProfile(), 1u) << active;
  }
}

TEST_F(SettingsStoreTest, ANewProfileWithoutAnyDefaultsStartsWithThoseOfTheClient) {
  Sql("DELETE FROM Profiles WHERE ProfileId > 2000; DELETE FROM Profiles WHERE ProfileId = 2000;"
      "DELETE FROM Profiles; DELETE FROM ClientState");
  ASSERT_EQ(store_.LoadProfiles(tables_.profiles), Failure());
  ASSERT_THAT(tables_.profiles, IsEmpty());
  std::shared_ptr<Profile> created;
  ASSERT_EQ(store_.CreateProfile(created), Failure());
  EXPECT_EQ(created->GetProfileId(), 2001u);
  EXPECT_EQ(created->GetLinkProfile(), 0u);
  EXPECT_EQ(created->GetDurationTime(), 0s);
}

TEST_F(SettingsStoreTest, ANewProfileNeedsAnIdAndTheOthers) {
  Sql("WITH RECURSIVE Id(N) AS (SELECT 2006 UNION ALL SELECT N + 1 FROM Id WHERE N < 9998)"
      "INSERT INTO Profiles (ProfileId, Name) SELECT N, 'x' FROM Id");
  ASSERT_EQ(store_.LoadProfiles(tables_.profiles), Failure());
  std::shared_ptr<Profile> created;
  ASSERT_EQ(store_.CreateProfile(created), Failure());
  EXPECT_EQ(created->GetProfileId(), 9999u);
  auto kept = created;
  EXPECT_EQ(store_.CreateProfile(created),
            Failure(L"No login profile can be made: there are as many login profiles as there can be."));
  EXPECT_EQ(created, nullptr);
  Sql("DELETE FROM Profiles WHERE ProfileId = 3000");
  ASSERT_EQ(store_.LoadProfiles(tables_.profiles), Failure());
  ASSERT_EQ(store_.CreateProfile(created), Failure());
  EXPECT_EQ(created->GetProfileId(), 9999u);
  kept = created;
  ASSERT_EQ(store_.CreateProfile(created), Failure());
  EXPECT_EQ(created->GetProfileId(), 3000u) << "a free one";
  store_.DiscardChanges();
  EXPECT_EQ(store_.CreateProfile(created),
            Failure(L"No login profile can be made: the login profiles have not been loaded."));
}

TEST_F(SettingsStoreTest, ANewProfileIsShownAlsoWhereItsDefaultsAreHidden) {
  Sql("UPDATE Profiles SET Hidden = 1 WHERE ProfileId = 1");
  ProfileTable profiles;
  ASSERT_EQ(store_.LoadProfiles(profiles), Failure());
  std::shared_ptr<Profile> created;
  ASSERT_EQ(store_.CreateProfile(created), Failure());
  EXPECT_FALSE(created->GetHidden());
}

TEST_F(SettingsStoreTest, ANewProfileDoesNotGetTheIdOfARemovedOne) {
  Sql("DELETE FROM Profiles WHERE ProfileId = 2005; DELETE FROM Profiles WHERE ProfileId = 2003");
  ASSERT_EQ(store_.LoadProfiles(tables_.profiles), Failure());
  std::shared_ptr<Profile> created;
  ASSERT_EQ(store_.CreateProfile(created), Failure());
  EXPECT_EQ(created->GetProfileId(), 2006u);
}

TEST_F(SettingsStoreTest, TheIdOfANewProfileThatNobodyWantedIsGivenOutAgain) {
  std::shared_ptr<Profile> kept;
  ASSERT_EQ(store_.CreateProfile(kept), Failure());
  std::shared_ptr<Profile> dropped;
  ASSERT_EQ(store_.CreateProfile(dropped), Failure());
  const uint32_t id = dropped->GetProfileId();
  ASSERT_NE(id, kept->GetProfileId());
  ASSERT_TRUE(store_.CopyLists(2004, id));
  dropped.reset();
  std::shared_ptr<Profile> again;
  ASSERT_EQ(store_.CreateProfile(again), Failure());
  EXPECT_EQ(again->GetProfileId(), id);
  PreferenceTable preferences;
  EXPECT_FALSE(store_.LoadOwnPreferences(id, preferences)) << "nothing of the one before";
}

TEST_F(SettingsStoreTest, ANewProfileHasThePreferencesAndEntriesOfTheDefaultsThatItFollows) {
  std::shared_ptr<Profile> created;
  ASSERT_EQ(store_.CreateProfile(created), Failure());
  created->Columns().linkProfile = 100;
  PreferenceTable preferences;
  ASSERT_TRUE(store_.LoadPreferences(2006, preferences));
  EXPECT_EQ(preferences.at(PreferenceId::VpnMtu)->GetValue(), 1480);
  EXPECT_EQ(preferences.at(PreferenceId::VpnMtu)->Fields().profileId, 2006u);
  AutoStartTable items;
  ASSERT_TRUE(store_.LoadAutoStart(2006, items));
  EXPECT_THAT(items, SizeIs(5));
  EXPECT_EQ(items.begin()->second->fields.profileId, 2006);
}
