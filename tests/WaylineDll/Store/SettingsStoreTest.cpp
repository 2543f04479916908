#include "WaylineDll/Store/SettingsStore.h"

#include <sqlite3.h>

#include <filesystem>

#include "tests/WaylineDll/Store/StoreTest.h"

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr char kTimeouts[] =
    "SELECT DefaultTimeouts, DurationTime, ThresholdOnOff, ThresholdBytes, ThresholdTimeOut, WarnTime FROM "
    "Profiles "
    "WHERE ProfileId = 2001";

class SettingsStoreTest : public StoreTest {
 protected:
  void SetUp() override {
    OpenSample();
    ASSERT_EQ(store_.LoadProfiles(tables_.profiles), Failure());
  }

  Profile& ProfileOf(uint32_t id) { return *tables_.profiles.at(id); }

  // A new profile as the client makes one: it starts with what its defaults say.
  Profile& AddProfile(uint32_t id, uint32_t parent) {
    const auto profile = std::make_shared<Profile>(ProfileOf(parent));
    profile->Columns().profileId = id;
    profile->Columns().linkProfile = parent;
    profile->SetName(L"New");
    profile->SetState(ChangeState::New);
    tables_.profiles[id] = profile;
    return *profile;
  }

  void SaveSucceeds() { ASSERT_EQ(store_.Save(tables_, report_), Failure()); }

  // Saving fails with this sentence, lists no changes and leaves the file byte for byte as it is.
  void SaveFails(const std::wstring& sentence) {
    const std::string before = FileBytes(file_);
    EXPECT_EQ(store_.Save(tables_, report_), Failure(sentence));
    EXPECT_THAT(report_.changes, IsEmpty());
    EXPECT_EQ(FileBytes(file_), before);
    EXPECT_NE(sqlite3_get_autocommit(StoreConnection()), 0) << "a transaction is still open";
  }

  SettingsTables tables_;
  SaveReport report_;
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
  EXPECT_EQ(store_.LoadConfig(2001, false), nullptr);
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

TEST_F(SettingsStoreTest, AnInheritedPreferenceThatIsChangedIsStoredForTheProfileAlone) {
  const char* const kAll = "SELECT count(*), sum(State) FROM Preferences";
  ASSERT_TRUE(store_.LoadPreferences(2001, tables_.preferences));
  const std::string before = Sql(kAll);
  tables_.preferences.at(PreferenceId::AutoConnect)->SetValue(Preference::kOn);
  SaveSucceeds();
  EXPECT_THAT(report_.changes, ElementsAre(RecordChange{RecordKind::Preference, 1014, ChangeState::Changed}));
  EXPECT_EQ(Sql("SELECT PreferenceId, State, Visible, IPSecRequired FROM Preferences WHERE ProfileId = 2001"),
            "1014|2|1|0");
  Sql("DELETE FROM Preferences WHERE ProfileId = 2001");
  EXPECT_EQ(Sql(kAll), before);
}

TEST_F(SettingsStoreTest, OwnPreferencesAreOnlyThoseThatAProfileStores) {
  PreferenceTable preferences;
  EXPECT_TRUE(store_.LoadOwnPreferences(10001, preferences));
  EXPECT_THAT(preferences, SizeIs(2));
  EXPECT_EQ(preferences.at(PreferenceId::VpnMtu)->GetValue(), 1482);
  EXPECT_FALSE(store_.LoadOwnPreferences(2001, preferences));
  EXPECT_THAT(preferences, IsEmpty());
}

TEST_F(SettingsStoreTest, AnUnknownProfileHasNoPreferences) {
  PreferenceTable preferences = {{PreferenceId::AutoConnect, nullptr}};
  EXPECT_FALSE(store_.LoadPreferences(4711, preferences));
  EXPECT_THAT(preferences, IsEmpty());
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

TEST_F(SettingsStoreTest, SavingNothingTouchesNothing) {
  ProfileOf(2001).SetDurationTime(60s);  // without a change state
  const std::string before = FileBytes(file_);
  SaveSucceeds();
  EXPECT_THAT(report_.changes, IsEmpty());
  EXPECT_EQ(FileBytes(file_), before);
}

TEST_F(SettingsStoreTest, AChangedProfileStoresOnlyWhatWasChanged) {
  ASSERT_EQ(Sql(kTimeouts), "NULL|NULL|NULL|NULL|NULL|NULL");
  ProfileOf(2001).SetDefaultTimeouts(false);
  ProfileOf(2001).SetDurationTime(7200s);
  ProfileOf(2001).SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql(kTimeouts), "0|7200|NULL|NULL|NULL|NULL");
  EXPECT_THAT(report_.changes, ElementsAre(RecordChange{RecordKind::Profile, 2001, ChangeState::Changed}));

  ProfileTable reloaded;
  ASSERT_EQ(store_.LoadProfiles(reloaded), Failure());
  EXPECT_EQ(reloaded.at(2001)->GetDurationTime(), 7200s);
  EXPECT_EQ(reloaded.at(2001)->GetState(), ChangeState::Unchanged);
}

TEST_F(SettingsStoreTest, UntouchedValuesGoOnInheriting) {
  ProfileOf(2001).SetDurationTime(7200s);
  ProfileOf(2001).SetState(ChangeState::Changed);
  SaveSucceeds();
  Sql("UPDATE Profiles SET WarnTime = 120, DurationTime = 60 WHERE ProfileId = 1");
  ProfileTable reloaded;
  ASSERT_EQ(store_.LoadProfiles(reloaded), Failure());
  EXPECT_EQ(reloaded.at(2001)->GetWarnTime(), 120s);
  EXPECT_EQ(reloaded.at(2001)->GetDurationTime(), 7200s);
}

TEST_F(SettingsStoreTest, AStoredValueCanGoBackToTheInheritedOne) {
  ProfileOf(2002).SetDurationTime(ProfileOf(100).GetDurationTime());
  ProfileOf(2002).SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT DurationTime FROM Profiles WHERE ProfileId = 2002"), "1800");
}

TEST_F(SettingsStoreTest, ProfilesKeepInheritingWhenTheirDefaultsAreSavedWithThem) {
  ProfileOf(1).SetWarnTime(120s);
  ProfileOf(1).SetState(ChangeState::Changed);
  ProfileOf(2001).SetDurationTime(7200s);  // its warning time is still the one of before
  ProfileOf(2001).SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql(kTimeouts), "NULL|7200|NULL|NULL|NULL|NULL");
}

TEST_F(SettingsStoreTest, ARenamedProfileStoresItsOtherChangesToo) {
  ProfileOf(2001).SetName(L"Z\u00fcrich \u20ac");
  ProfileOf(2001).SetState(ChangeState::Renamed);
  ProfileOf(2001).SetWarnTime(-60s);
  ProfileOf(2001).SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT Name, WarnTime FROM Profiles WHERE ProfileId = 2001"), "Z\xc3\xbcrich \xe2\x82\xac|-60");
  EXPECT_THAT(report_.changes, ElementsAre(RecordChange{RecordKind::Profile, 2001, ChangeState::Renamed}));
}

TEST_F(SettingsStoreTest, ARenamingToTheSameNameIsListedAndStoresNothing) {
  ProfileOf(2001).SetState(ChangeState::Renamed);
  SaveSucceeds();
  EXPECT_THAT(report_.changes, SizeIs(1));
  EXPECT_EQ(Sql(kTimeouts), "NULL|NULL|NULL|NULL|NULL|NULL");
}

TEST_F(SettingsStoreTest, ANewProfileStoresWhatDiffersFromItsDefaults) {
  Profile& profile = AddProfile(3000, 100);
  profile.SetUserId(L"new.sample");
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT Name, LinkProfile, UserId, Account, DurationTime, STValidUnits FROM Profiles "
                "WHERE ProfileId = 3000"),
            "New|100|new.sample|NULL|NULL|NULL");
  EXPECT_THAT(report_.changes, ElementsAre(RecordChange{RecordKind::Profile, 3000, ChangeState::New}));
}

TEST_F(SettingsStoreTest, ANewProfileStoresItsNameEvenIfItsDefaultsHaveTheSame) {
  AddProfile(3000, 100).SetName(L"Field Service");
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT Name FROM Profiles WHERE ProfileId = 3000"), "Field Service");
}

TEST_F(SettingsStoreTest, ANewProfileWithoutDefaultsStoresWhatDiffersFromThoseOfTheClient) {
  const auto profile = std::make_shared<Profile>(3000);
  profile->SetName(L"Root");
  profile->SetWarnTime(30s);
  profile->SetState(ChangeState::New);
  tables_.profiles[3000] = profile;
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT LinkProfile, WarnTime, DurationTime FROM Profiles WHERE ProfileId = 3000"), "0|30|NULL");
}

TEST_F(SettingsStoreTest, ANewProfileCanFollowAnotherNewOne) {
  AddProfile(3000, 100).SetWarnTime(31s);
  AddProfile(3001, 3000).SetDurationTime(61s);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT LinkProfile, WarnTime, DurationTime FROM Profiles WHERE ProfileId = 3001"), "3000|NULL|61");
}

TEST_F(SettingsStoreTest, ARemovedProfileTakesItsRowsAlong) {
  ProfileOf(2004).SetState(ChangeState::Removed);
  // Changed before the profile was removed.
  PreferenceFields preference;
  preference.preferenceId = PreferenceId::AutoConnect;
  preference.profileId = 2004;
  tables_.preferences[preference.preferenceId] = std::make_shared<Preference>(preference);
  tables_.preferences[preference.preferenceId]->SetValue(Preference::kOn);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT count(*) FROM Profiles WHERE ProfileId = 2004"), "0");
  for (const std::string table : {"Preferences", "AutoStart", "ConfigSettings"}) {
    EXPECT_EQ(Sql("SELECT count(*) FROM " + table + " WHERE ProfileId = 2004"), "0") << table;
  }
}

TEST_F(SettingsStoreTest, ANewProfileThatWasRemovedAgainIsNotMissed) {
  AddProfile(3000, 100).SetState(ChangeState::Removed);
  SaveSucceeds();
  EXPECT_THAT(report_.changes, ElementsAre(RecordChange{RecordKind::Profile, 3000, ChangeState::Removed}));
  EXPECT_EQ(Sql("SELECT count(*) FROM Profiles WHERE ProfileId = 3000"), "0");
}

TEST_F(SettingsStoreTest, DefaultsCanBeRemovedWithTheProfilesThatFollowThem) {
  for (const uint32_t id : {100u, 2002u, 10001u}) ProfileOf(id).SetState(ChangeState::Removed);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT count(*) FROM Profiles"), "6");
}

TEST_F(SettingsStoreTest, StoresTheOtherTablesByTheirChangeStates) {
  PreferenceFields preference;
  preference.preferenceId = PreferenceId::AutoConnect;
  preference.profileId = 2001;
  preference.visible = true;
  tables_.preferences[preference.preferenceId] = std::make_shared<Preference>(preference);
  tables_.preferences[preference.preferenceId]->SetValue(Preference::kOn);
  tables_.preferences[PreferenceId::PreferIPv6] = std::make_shared<Preference>();  // unchanged

  const auto program = std::make_shared<AutoStartItem>();
  program->fields.id = 500;
  program->fields.profileId = 2001;
  program->fields.phase = 300;
  program->fields.name = L"Clock";
  program->SetState(ChangeState::New);
  tables_.autoStartItems[500] = program;
  const auto removed = std::make_shared<AutoStartItem>();
  removed->fields.id = 1;
  removed->SetState(ChangeState::Removed);
  tables_.autoStartItems[1] = removed;

  const auto manual = std::make_shared<ConfigSetting>();
  manual->fields.profileId = 2001;
  manual->fields.manualProxy = L"proxy.example.org:1";
  manual->SetState(ChangeState::Changed);
  tables_.manualConfigs[2001] = manual;
  const auto automatic = std::make_shared<ConfigSetting>();
  automatic->fields.profileId = 2004;
  automatic->fields.automatic = true;
  automatic->SetState(ChangeState::Removed);
  tables_.autoConfigs[2004] = automatic;
  tables_.autoConfigs[2005] = nullptr;

  SaveSucceeds();
  EXPECT_THAT(report_.changes, ElementsAre(RecordChange{RecordKind::Preference, 1014, ChangeState::Changed},
                                           RecordChange{RecordKind::AutoStartItem, 1, ChangeState::Removed},
                                           RecordChange{RecordKind::AutoStartItem, 500, ChangeState::New},
                                           RecordChange{RecordKind::ManualConfig, 2001, ChangeState::Changed},
                                           RecordChange{RecordKind::AutoConfig, 2004, ChangeState::Removed}));
  EXPECT_EQ(Sql("SELECT PreferenceId, State, Visible FROM Preferences WHERE ProfileId = 2001"), "1014|2|1");
  EXPECT_EQ(Sql("SELECT count(*) FROM Preferences WHERE ProfileId = 0"), "0");
  EXPECT_EQ(Sql("SELECT Name, Phase FROM AutoStart WHERE Id = 500"), "Clock|300");
  EXPECT_EQ(Sql("SELECT count(*) FROM AutoStart WHERE Id = 1"), "0");
  EXPECT_EQ(Sql("SELECT ManualProxy FROM ConfigSettings WHERE ProfileId = 2001 AND Automatic = 0"),
            "proxy.example.org:1");
  EXPECT_EQ(Sql("SELECT group_concat(Automatic) FROM ConfigSettings WHERE ProfileId = 2004"), "0");
}

TEST_F(SettingsStoreTest, ARecordThatNoLongerExistsSavesNothing) {
  Sql("DELETE FROM Profiles WHERE ProfileId = 2002");
  ProfileOf(2001).SetName(L"Other");
  ProfileOf(2001).SetState(ChangeState::Renamed);
  ProfileOf(2002).SetState(ChangeState::Changed);
  SaveFails(L"Nothing was saved, because profile 2002 could not be stored: it no longer exists.");
}

TEST_F(SettingsStoreTest, AConstraintRollsEverythingBack) {
  AddProfile(3000, 100);
  ProfileOf(2001).SetName(L"Other");
  ProfileOf(2001).SetState(ChangeState::Renamed);
  ProfileOf(1).SetState(ChangeState::Removed);
  SaveFails(L"Nothing was saved, because profile 1 could not be stored: other profiles are linked to it.");
  EXPECT_EQ(Sql("SELECT count(*) FROM Profiles WHERE ProfileId = 3000 OR Name = 'Other'"), "0");
}

TEST_F(SettingsStoreTest, ANewProfileWhoseIdIsTakenSavesNothing) {
  AddProfile(2001, 100);
  SaveFails(
      L"Nothing was saved, because profile 2001 could not be stored: UNIQUE constraint failed: "
      L"Profiles.ProfileId.");
}

TEST_F(SettingsStoreTest, AFailureInALaterTableRollsTheProfilesBack) {
  ProfileOf(2001).SetName(L"Other");
  ProfileOf(2001).SetState(ChangeState::Renamed);
  Sql("DROP TABLE AutoStart");
  tables_.autoStartItems[500] = std::make_shared<AutoStartItem>();
  tables_.autoStartItems[500]->SetState(ChangeState::New);
  SaveFails(L"Nothing was saved, because autostart entry 500 could not be stored: no such table: AutoStart.");
}

TEST_F(SettingsStoreTest, AFullDiskRollsEverythingBack) {
  Sql("VACUUM");
  // No page may be added to those that the file has.
  ASSERT_EQ(sqlite3_exec(StoreConnection(), "PRAGMA max_page_count = 1", nullptr, nullptr, nullptr), SQLITE_OK);
  ProfileOf(2001).SetAccount(L"small");
  ProfileOf(2001).SetState(ChangeState::Changed);
  ProfileOf(2002).SetAccount(std::wstring(100'000, L'x'));
  ProfileOf(2002).SetState(ChangeState::Changed);
  SaveFails(L"Nothing was saved, because profile 2002 could not be stored: the disk is full.");
  EXPECT_EQ(Sql("SELECT Account FROM Profiles WHERE ProfileId = 2001"), "NULL");
}

TEST_F(SettingsStoreTest, AFileThatAnotherProgramWritesIsNotSaved) {
  ProfileOf(2001).SetAccount(L"other");
  ProfileOf(2001).SetState(ChangeState::Changed);
  {
    const FileLock otherProgram(file_, "BEGIN IMMEDIATE");
    SaveFails(L"Nothing was saved: the settings database is in use by another program.");
  }
  SaveSucceeds();
}

TEST_F(SettingsStoreTest, AFileThatAnotherProgramReadsCannotBeCommitted) {
  ProfileOf(2001).SetAccount(L"other");
  ProfileOf(2001).SetState(ChangeState::Changed);
  const FileLock otherProgram(file_, "BEGIN; SELECT * FROM Profiles");
  SaveFails(L"Nothing was saved: the settings database is in use by another program.");
}

TEST_F(SettingsStoreTest, AReadOnlyConnectionSavesNothing) {
  ProfileOf(2001).SetAccount(L"other");
  ProfileOf(2001).SetState(ChangeState::Changed);
  ASSERT_EQ(sqlite3_exec(StoreConnection(), "PRAGMA query_only = 1", nullptr, nullptr, nullptr), SQLITE_OK);
  SaveFails(L"Nothing was saved: the settings database is read-only.");
}

TEST_F(SettingsStoreTest, LinksThatHaveNoEndAreNotSavedTo) {
  Sql("DROP TRIGGER ProfileUpdateKeepsChains; UPDATE Profiles SET LinkProfile = 2001 WHERE ProfileId = 1");
  ProfileOf(2001).SetState(ChangeState::Changed);
  SaveFails(L"The file \"" + file_ +
            L"\" cannot be used: the settings database is damaged (the links of profile 1 have no end).");
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

TEST_F(SettingsStoreTest, SetPreferenceAddsNoRow) {
  OpenSample();
  const std::string before = Sql("SELECT count(*) FROM Preferences");
  EXPECT_EQ(store_.SetPreference(2001, PreferenceId{1014}, Preference::kOn), std::nullopt);
  EXPECT_EQ(Sql("SELECT count(*) FROM Preferences"), before);
}
