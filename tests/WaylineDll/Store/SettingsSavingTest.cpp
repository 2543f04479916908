// What saving writes: what the user has changed, and nothing else.
#include <sqlite3.h>

#include <memory>

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
constexpr char kWiFi[] =
    "SELECT OverrideAutoReconnectDefaults, OverrideARMode, OverrideASWiFiMode, OverridePromptUserToSwitch, "
    "OverrideSwitchInterval, OverrideSignalStrength, AdvancedAutoReconnectSettings FROM Profiles WHERE ProfileId = 2001";
constexpr char kProxy[] =
    "SELECT DefaultProxy, AutoProxySetting, ManualProxySetting, ProxyExceptionsSetting FROM Profiles "
    "WHERE ProfileId = 2001";

using SettingsSaving = LoadedStoreTest;

}  // namespace

TEST_F(SettingsSaving, AnInheritedPreferenceThatIsChangedIsStoredForTheProfileAlone) {
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

TEST_F(SettingsSaving, SavingNothingTouchesNothing) {
  ProfileOf(2001).SetDurationTime(60s);  // without a change state
  const std::string before = FileBytes(file_);
  SaveSucceeds();
  EXPECT_THAT(report_.changes, IsEmpty());
  EXPECT_EQ(FileBytes(file_), before);
}

TEST_F(SettingsSaving, AnOverriddenPageIsStoredWhole) {
  ASSERT_EQ(Sql(kTimeouts), "NULL|NULL|NULL|NULL|NULL|NULL");
  ProfileOf(2001).SetDefaultTimeouts(false);
  ProfileOf(2001).SetDurationTime(7200s);
  ProfileOf(2001).SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql(kTimeouts), "0|7200|1|1000|600|60");
  EXPECT_THAT(report_.changes, ElementsAre(RecordChange{RecordKind::Profile, 2001, ChangeState::Changed}));

  ProfileTable reloaded;
  ASSERT_EQ(store_.LoadProfiles(reloaded), Failure());
  EXPECT_EQ(reloaded.at(2001)->GetDurationTime(), 7200s);
  EXPECT_EQ(reloaded.at(2001)->GetState(), ChangeState::Unchanged);
}

TEST_F(SettingsSaving, UntouchedValuesGoOnInheriting) {
  ProfileOf(2001).SetDurationTime(7200s);
  ProfileOf(2001).SetState(ChangeState::Changed);
  SaveSucceeds();
  Sql("UPDATE Profiles SET WarnTime = 120, DurationTime = 60 WHERE ProfileId = 1");
  ProfileTable reloaded;
  ASSERT_EQ(store_.LoadProfiles(reloaded), Failure());
  EXPECT_EQ(reloaded.at(2001)->GetWarnTime(), 120s);
  EXPECT_EQ(reloaded.at(2001)->GetDurationTime(), 7200s);
}

TEST_F(SettingsSaving, AStoredValueCanGoBackToTheInheritedOne) {
  ProfileOf(2002).SetDurationTime(ProfileOf(100).GetDurationTime());
  ProfileOf(2002).SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT DurationTime FROM Profiles WHERE ProfileId = 2002"), "1800");
}

TEST_F(SettingsSaving, ProfilesKeepInheritingWhenTheirDefaultsAreSavedWithThem) {
  ProfileOf(1).SetWarnTime(120s);
  ProfileOf(1).SetState(ChangeState::Changed);
  ProfileOf(2001).SetDurationTime(7200s);  // its warning time is still the one of before
  ProfileOf(2001).SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql(kTimeouts), "NULL|7200|NULL|NULL|NULL|NULL");
}

TEST_F(SettingsSaving, ARenamedProfileStoresItsOtherChangesToo) {
  ProfileOf(2001).SetName(L"Z\u00fcrich \u20ac");
  ProfileOf(2001).SetState(ChangeState::Renamed);
  ProfileOf(2001).SetWarnTime(-60s);
  ProfileOf(2001).SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT Name, WarnTime FROM Profiles WHERE ProfileId = 2001"), "Z\xc3\xbcrich \xe2\x82\xac|-60");
  EXPECT_THAT(report_.changes, ElementsAre(RecordChange{RecordKind::Profile, 2001, ChangeState::Renamed}));
}

TEST_F(SettingsSaving, ARenamingToTheSameNameWritesNothing) {
  ProfileOf(2001).SetState(ChangeState::Renamed);
  SaveSucceeds();
  EXPECT_THAT(report_.changes, IsEmpty());
  EXPECT_EQ(Sql(kTimeouts), "NULL|NULL|NULL|NULL|NULL|NULL");
}

TEST_F(SettingsSaving, ANewProfileStoresWhatDiffersFromItsDefaults) {
  Profile& profile = AddProfile(3000, 100);
  profile.SetUserId(L"new.sample");
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT Name, LinkProfile, UserId, Account, DurationTime, STValidUnits FROM Profiles "
                "WHERE ProfileId = 3000"),
            "New|100|new.sample|NULL|NULL|NULL");
  EXPECT_THAT(report_.changes, ElementsAre(RecordChange{RecordKind::Profile, 3000, ChangeState::New}));
}

TEST_F(SettingsSaving, ANewProfileStoresItsNameEvenIfItsDefaultsHaveTheSame) {
  AddProfile(3000, 100).SetName(L"Field Service");
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT Name FROM Profiles WHERE ProfileId = 3000"), "Field Service");
}

TEST_F(SettingsSaving, ANewProfileWithoutDefaultsStoresWhatDiffersFromThoseOfTheClient) {
  const auto profile = std::make_shared<Profile>(3000);
  profile->SetName(L"Root");
  profile->SetWarnTime(30s);
  profile->SetState(ChangeState::New);
  tables_.profiles[3000] = profile;
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT LinkProfile, WarnTime, DurationTime FROM Profiles WHERE ProfileId = 3000"), "0|30|NULL");
}

TEST_F(SettingsSaving, ANewProfileCanFollowAnotherNewOne) {
  AddProfile(3000, 100).SetWarnTime(31s);
  AddProfile(3001, 3000).SetDurationTime(61s);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT LinkProfile, WarnTime, DurationTime FROM Profiles WHERE ProfileId = 3001"), "3000|NULL|61");
}

TEST_F(SettingsSaving, ARemovedProfileTakesItsRowsAlong) {
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

TEST_F(SettingsSaving, ANewProfileThatWasRemovedAgainIsNotMissed) {
  AddProfile(3000, 100).SetState(ChangeState::Removed);
  SaveSucceeds();
  EXPECT_THAT(report_.changes, IsEmpty());
  EXPECT_EQ(Sql("SELECT count(*) FROM Profiles WHERE ProfileId = 3000"), "0");
}

TEST_F(SettingsSaving, DefaultsCanBeRemovedWithTheProfilesThatFollowThem) {
  for (const uint32_t id : {100u, 2002u, 10001u}) ProfileOf(id).SetState(ChangeState::Removed);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT count(*) FROM Profiles"), "6");
}

TEST_F(SettingsSaving, AFailureInALaterTableRollsTheProfilesBack) {
  ProfileOf(2001).SetName(L"Other");
  ProfileOf(2001).SetState(ChangeState::Renamed);
  Sql("DROP TABLE AutoStart");
  tables_.autoStartItems[500] = std::make_shared<AutoStartItem>();
  tables_.autoStartItems[500]->fields.profileId = 2001;
  tables_.autoStartItems[500]->SetState(ChangeState::New);
  SaveFails(
      L"Nothing was saved, because the autostart entries of the login profile \"Other\" could not be stored: the settings database is incomplete.");
}

TEST_F(SettingsSaving, AFullDiskRollsEverythingBack) {
  Sql("VACUUM");
  // No page may be added to those that the file has.
  ASSERT_EQ(sqlite3_exec(StoreConnection(), "PRAGMA max_page_count = 1", nullptr, nullptr, nullptr), SQLITE_OK);
  ProfileOf(2001).SetAccount(L"small");
  ProfileOf(2001).SetState(ChangeState::Changed);
  ProfileOf(2002).SetAccount(std::wstring(100'000, L'x'));
  ProfileOf(2002).SetState(ChangeState::Changed);
  SaveFails(L"Nothing was saved, because the login profile \"Work 2\" could not be stored: the disk is full.");
  EXPECT_EQ(Sql("SELECT Account FROM Profiles WHERE ProfileId = 2001"), "NULL");
}

TEST_F(SettingsSaving, AFileThatAnotherProgramWritesIsNotSaved) {
  ProfileOf(2001).SetAccount(L"other");
  ProfileOf(2001).SetState(ChangeState::Changed);
  {
    const FileLock otherProgram(file_, "BEGIN IMMEDIATE");
    SaveFails(L"Nothing was saved: the settings database is in use by another program.");
  }
  SaveSucceeds();
}

TEST_F(SettingsSaving, AFileThatAnotherProgramReadsCannotBeCommitted) {
  ProfileOf(2001).SetAccount(L"other");
  ProfileOf(2001).SetState(ChangeState::Changed);
  const FileLock otherProgram(file_, "BEGIN; SELECT * FROM Profiles");
  SaveFails(L"Nothing was saved: the settings database is in use by another program.");
}

TEST_F(SettingsSaving, AReadOnlyConnectionSavesNothing) {
  ProfileOf(2001).SetAccount(L"other");
  ProfileOf(2001).SetState(ChangeState::Changed);
  ASSERT_EQ(sqlite3_exec(StoreConnection(), "PRAGMA query_only = 1", nullptr, nullptr, nullptr), SQLITE_OK);
  SaveFails(L"Nothing was saved: the settings database is read-only.");
}

// Overriding

TEST_F(SettingsSaving, AProfileThatOverridesAPageStoresAllOfItWhateverTheDefaultsAreLater) {
  Profile& work = ProfileOf(2001);
  work.SetDefaultTimeouts(false);
  work.SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql(kTimeouts), "0|14400|1|1000|600|60");
  Sql("UPDATE Profiles SET DurationTime = 600 WHERE ProfileId = 1");
  ProfileTable reloaded;
  ASSERT_EQ(store_.LoadProfiles(reloaded), Failure());
  EXPECT_EQ(reloaded.at(2001)->GetDurationTime(), 14400s);
}

TEST_F(SettingsSaving, EveryPageIsPinnedByItsOwnFlag) {
  Profile& work = ProfileOf(2001);
  work.SetDefaultProxy(false);
  work.SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql(kProxy), "0|a|a|a");
  EXPECT_EQ(Sql(kTimeouts), "NULL|NULL|NULL|NULL|NULL|NULL");
  EXPECT_EQ(Sql(kWiFi), "NULL|NULL|NULL|NULL|NULL|NULL|NULL");

  ASSERT_EQ(store_.LoadProfiles(tables_.profiles), Failure());
  ProfileOf(2001).SetOverrideAutoReconnectDefaults(true);
  ProfileOf(2001).SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql(kWiFi), "1|0|0|0|0|0|0");
  EXPECT_EQ(Sql(kTimeouts), "NULL|NULL|NULL|NULL|NULL|NULL");
}

TEST_F(SettingsSaving, AnOverriddenPageIsPinnedWhenOneOfItsValuesChanges) {
  Sql("UPDATE Profiles SET DefaultTimeouts = 0 WHERE ProfileId = 2001");
  ASSERT_EQ(store_.LoadProfiles(tables_.profiles), Failure());
  ProfileOf(2001).SetWarnTime(30s);
  ProfileOf(2001).SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql(kTimeouts), "0|14400|1|1000|600|30");
}

TEST_F(SettingsSaving, AChangeElsewherePinsNothingOfAnOverriddenPage) {
  Sql("UPDATE Profiles SET DefaultTimeouts = 0 WHERE ProfileId = 2001");
  ASSERT_EQ(store_.LoadProfiles(tables_.profiles), Failure());
  ProfileOf(2001).SetUserId(L"other");  // of another page
  ProfileOf(2001).SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql(kTimeouts), "0|NULL|NULL|NULL|NULL|NULL");
}

TEST_F(SettingsSaving, AProfileThatGoesBackToTheDefaultsKeepsItsValuesInMind) {
  Profile& own = ProfileOf(2002);
  own.SetDefaultTimeouts(true);
  own.SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT DefaultTimeouts, DurationTime, WarnTime FROM Profiles WHERE ProfileId = 2002"), "1|1200|60");
}

TEST_F(SettingsSaving, PreferencesOfItsOwnAreStoredAsAWhole) {
  ProfileOf(2001).SetDefaultPreferences(false);
  ProfileOf(2001).SetState(ChangeState::Changed);
  PreferenceOf(2001, PreferenceId::AutoConnect)->SetValue(Preference::kOn);
  SaveSucceeds();
  EXPECT_THAT(report_.changes, ElementsAre(RecordChange{RecordKind::Profile, 2001, ChangeState::Changed},
                                           RecordChange{RecordKind::Preference, 1014, ChangeState::Changed}));
  EXPECT_EQ(Sql("SELECT count(*), sum(PreferenceId = 1014 AND State = 2) FROM Preferences WHERE ProfileId = 2001"),
            "27|1");
  Sql("UPDATE Preferences SET State = 1481 WHERE ProfileId = 1 AND PreferenceId = 1477");
  EXPECT_EQ(PreferenceOf(2001, PreferenceId::VpnMtu)->GetValue(), 1478);
}

TEST_F(SettingsSaving, PreferencesThatNobodyLookedAtArePinnedToo) {
  ProfileOf(2001).SetDefaultPreferences(false);
  ProfileOf(2001).SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT count(*) FROM Preferences WHERE ProfileId = 2001"), "27");
}

TEST_F(SettingsSaving, AChangedPreferenceOfAnOverridingProfilePinsTheOthers) {
  Sql("DELETE FROM Preferences WHERE ProfileId = 2004 AND PreferenceId > 1100");
  PreferenceOf(2004, PreferenceId::ConfirmOnExit)->SetValue(Preference::kOff);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT count(*) FROM Preferences WHERE ProfileId = 2004"), "27");
}

TEST_F(SettingsSaving, PreferencesThatWereOnlyLookedAtPinNothing) {
  const std::string before = FileBytes(file_);
  PreferenceOf(2001, PreferenceId::AutoConnect);
  PreferenceOf(2004, PreferenceId::AutoConnect)->SetValue(Preference::kOn);  // as it is
  SaveSucceeds();
  EXPECT_THAT(report_.changes, IsEmpty());
  EXPECT_TRUE(FileBytes(file_) == before);
}

TEST_F(SettingsSaving, AProfileThatSharesThePreferencesOfItsDefaultsPinsNone) {
  ProfileOf(10001).SetDefaultPreferences(true);
  ProfileOf(10001).SetState(ChangeState::Changed);
  SaveSucceeds();
  ASSERT_EQ(store_.LoadProfiles(tables_.profiles), Failure());
  ProfileOf(10001).SetDefaultPreferences(false);
  ProfileOf(10001).SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT count(*) FROM Preferences WHERE ProfileId = 10001"), "2");
}

TEST_F(SettingsSaving, TogglesOfEveryProfileAreSavedAlsoOfThoseNotShownLast) {
  PreferenceOf(2004, PreferenceId::AutoConnect)->SetValue(Preference::kOff);
  PreferenceOf(2002, PreferenceId::AutoConnect)->SetValue(Preference::kOn);
  tables_.preferences.clear();
  PreferenceOf(2003, PreferenceId::AutoConnect);
  SaveSucceeds();
  EXPECT_THAT(report_.changes, SizeIs(2));
  EXPECT_EQ(Sql("SELECT group_concat(ProfileId || ':' || State) FROM Preferences WHERE PreferenceId = 1014 AND "
                "ProfileId IN (2002, 2003, 2004)"),
            "2002:2,2004:1");
}

TEST_F(SettingsSaving, AnAutostartListOfItsOwnIsStoredAsAWhole) {
  ProfileOf(2003).SetDefaultAutostart(false);
  ProfileOf(2003).SetState(ChangeState::Changed);
  SaveSucceeds();
  const char* const kList =
      "SELECT group_concat(Name) FROM (SELECT Name FROM AutoStart WHERE ProfileId = 2003 "
      "ORDER BY Phase, ItemOrder)";
  EXPECT_EQ(Sql(kList),
            Sql("SELECT group_concat(Name) FROM (SELECT Name FROM AutoStart WHERE ProfileId = 2000 ORDER BY "
                "Phase, ItemOrder)"));
  EXPECT_EQ(Sql("SELECT max(Id) < 1000 FROM AutoStart"), "1") << "the next that are free";
}

TEST_F(SettingsSaving, AChangedEntryOfACopiedListStoresTheWholeList) {
  const auto item = AutoStartOf(2003, L"Clean up");
  item->fields.name = L"Tidy up";
  item->SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT count(*), sum(Name = 'Tidy up'), sum(Name = 'Clean up') FROM AutoStart WHERE ProfileId = 2003"),
            "5|1|0");
  EXPECT_EQ(Sql("SELECT count(*) FROM AutoStart WHERE Name = 'Clean up' AND ProfileId = 2000"), "1");
}

TEST_F(SettingsSaving, AnEntryRemovedFromACopiedListIsLeftOutOfIt) {
  AutoStartOf(2003, L"Clean up")->SetState(ChangeState::Removed);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT count(*), sum(RecordType) FROM AutoStart WHERE ProfileId = 2003"), "4|4") << "the headers";
}

TEST_F(SettingsSaving, AnAutostartListThatWasOnlyLookedAtIsNotStored) {
  const std::string before = FileBytes(file_);
  AutoStartOf(2003, L"Clean up");
  AutoStartOf(2004, L"Notes")->SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_TRUE(FileBytes(file_) == before);
}

// Rows beside the profiles

TEST_F(SettingsSaving, ChangedRowsStoreWhatWasChangedInThem) {
  const auto notes = AutoStartOf(2004, L"Notes");
  notes->fields.delaySeconds = 99;
  notes->SetState(ChangeState::Changed);
  AutoStartOf(2004, L"Goodbye")->SetState(ChangeState::Removed);
  const auto manual = store_.LoadConfig(2004, false);
  manual->fields.manualProxy = L"proxy.example.org:1";
  manual->SetState(ChangeState::Changed);
  const auto automatic = store_.LoadConfig(2004, true);
  automatic->SetState(ChangeState::Removed);
  SaveSucceeds();
  EXPECT_THAT(report_.changes, ElementsAre(RecordChange{RecordKind::AutoStartItem,
                                                        static_cast<uint32_t>(notes->fields.id), ChangeState::Changed},
                                           testing::Field(&RecordChange::state, ChangeState::Removed),
                                           RecordChange{RecordKind::ManualConfig, 2004, ChangeState::Changed},
                                           RecordChange{RecordKind::AutoConfig, 2004, ChangeState::Removed}));
  EXPECT_EQ(Sql("SELECT Name, DelaySeconds FROM AutoStart WHERE ProfileId = 2004 AND Phase = 700 AND ItemOrder = 1"),
            "Notes|99");
  EXPECT_EQ(Sql("SELECT count(*) FROM AutoStart WHERE Name = 'Goodbye'"), "0");
  EXPECT_EQ(Sql("SELECT ManualProxy, AutoProxyUrl FROM ConfigSettings WHERE ProfileId = 2004 AND Automatic = 0"),
            "proxy.example.org:1|http://proxy.example.net/office.pac");
  EXPECT_EQ(Sql("SELECT group_concat(Automatic) FROM ConfigSettings WHERE ProfileId = 2004"), "0");
}

TEST_F(SettingsSaving, RecordsThatTheCallerMadeAreAdded) {
  PreferenceFields preference;
  preference.preferenceId = PreferenceId::AutoConnect;
  preference.profileId = 2001;
  preference.visible = true;
  tables_.preferences[preference.preferenceId] = std::make_shared<Preference>(preference);
  tables_.preferences[preference.preferenceId]->SetValue(Preference::kOn);
  tables_.preferences[PreferenceId::PreferIPv6] = std::make_shared<Preference>();  // unchanged
  tables_.preferences[PreferenceId::VpnMtu] = nullptr;

  const auto program = std::make_shared<AutoStartItem>();
  program->fields.id = 1;  // that of another entry
  program->fields.profileId = 2001;
  program->fields.phase = 300;
  program->fields.name = L"Clock";
  program->SetState(ChangeState::New);
  tables_.autoStartItems[1] = program;
  tables_.autoStartItems[2] = nullptr;

  const auto manual = std::make_shared<ConfigSetting>();
  manual->fields.profileId = 2002;
  manual->fields.manualProxy = L"proxy.example.org:1";
  manual->SetState(ChangeState::Changed);
  tables_.manualConfigs[2002] = manual;
  tables_.manualConfigs[2003] = nullptr;
  tables_.autoConfigs[2005] = nullptr;
  tables_.profiles[2077] = nullptr;
  const std::string other = Sql("SELECT * FROM AutoStart WHERE Id = 1");

  SaveSucceeds();
  EXPECT_THAT(report_.changes, SizeIs(3));
  EXPECT_EQ(Sql("SELECT PreferenceId, State, Visible FROM Preferences WHERE ProfileId = 2001"), "1014|2|1");
  EXPECT_EQ(Sql("SELECT count(*) FROM Preferences WHERE ProfileId = 0"), "0");
  EXPECT_EQ(Sql("SELECT Phase FROM AutoStart WHERE Name = 'Clock'"), "300");
  EXPECT_EQ(Sql("SELECT * FROM AutoStart WHERE Id = 1"), other) << "it never replaces another entry";
  EXPECT_EQ(Sql("SELECT ManualProxy FROM ConfigSettings WHERE ProfileId = 2002 AND Automatic = 0"),
            "proxy.example.org:1");
}

TEST_F(SettingsSaving, AProxyConfigurationThatIsFilledInIsAdded) {
  const auto config = store_.LoadConfig(2003, false);
  config->fields.autoProxyUrl = L"http://proxy.example.org/own.pac";
  config->SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT AutoProxyUrl, ManualProxy FROM ConfigSettings WHERE ProfileId = 2003 AND Automatic = 0"),
            "http://proxy.example.org/own.pac|");
}

TEST_F(SettingsSaving, ANewEntryDoesNotTakeThePlaceOfOneThatWasLoadedUnderItsNumber) {
  const auto notes = AutoStartOf(2004, L"Notes");
  notes->fields.delaySeconds = 99;
  notes->SetState(ChangeState::Changed);
  const auto program = std::make_shared<AutoStartItem>();
  program->fields.id = notes->fields.id;
  program->fields.profileId = 2004;
  program->fields.name = L"Clock";
  program->SetState(ChangeState::New);
  tables_.autoStartItems[static_cast<uint32_t>(program->fields.id)] = program;
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT DelaySeconds FROM AutoStart WHERE ProfileId = 2004 AND Name = 'Notes'"), "99");
  EXPECT_EQ(Sql("SELECT count(*) FROM AutoStart WHERE ProfileId = 2004 AND Name = 'Clock'"), "1");
}

// Records that come and go

TEST_F(SettingsSaving, AProfileThatWasMadeAndRemovedAgainLeavesNoRows) {
  const std::string before = FileBytes(file_);
  AddProfile(3000, 100).SetState(ChangeState::Removed);
  const auto preference = std::make_shared<Preference>(*PreferenceOf(2004, PreferenceId::AutoConnect));
  preference->SetProfileId(3000);
  tables_.preferences[PreferenceId::AutoConnect] = preference;
  const auto item = std::make_shared<AutoStartItem>(*AutoStartOf(2004, L"Notes"));
  item->fields.profileId = 3000;
  item->SetState(ChangeState::New);
  tables_.autoStartItems[77] = item;
  tables_.manualConfigs[3000] = store_.LoadConfig(3000, false);
  tables_.manualConfigs[3000]->fields.manualProxy = L"x:1";
  tables_.manualConfigs[3000]->SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_THAT(report_.changes, IsEmpty());
  EXPECT_TRUE(FileBytes(file_) == before);
}

TEST_F(SettingsSaving, ANewProfileBringsItsRowsAlong) {
  std::shared_ptr<Profile> created;
  ASSERT_EQ(store_.CreateProfile(created), Failure());
  created->SetName(L"Fresh");
  created->SetDefaultPreferences(false);
  created->SetState(ChangeState::New);
  tables_.profiles[created->GetProfileId()] = created;
  PreferenceOf(2006, PreferenceId::AutoConnect)->SetValue(Preference::kOn);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT Name, LinkProfile, DefaultPreferences, DurationTime, SMIdleTime, Account FROM Profiles WHERE "
                "ProfileId = 2006"),
            "Fresh|1|0|NULL|NULL|NULL")
      << "limits stay inherited";
  EXPECT_EQ(Sql("SELECT count(*) FROM Preferences WHERE ProfileId = 2006"), "27");
}

TEST_F(SettingsSaving, ANewProfileThatTheCallerMadeItselfInheritsToo) {
  AddProfile(3000, 100).SetDefaultPreferences(false);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT State FROM Preferences WHERE ProfileId = 3000 AND PreferenceId = 1477"), "1480");
}

TEST_F(SettingsSaving, ProfilesAreAddedAndRemovedInTheOrderOfTheirLinks) {
  AddProfile(3001, 100);
  AddProfile(3000, 100).Columns().linkProfile = 3001;  // made before the one that it follows
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT LinkProfile FROM Profiles WHERE ProfileId = 3000"), "3001");
  ASSERT_EQ(store_.LoadProfiles(tables_.profiles), Failure());
  for (const uint32_t id : {3000u, 3001u}) ProfileOf(id).SetState(ChangeState::Removed);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT count(*) FROM Profiles WHERE ProfileId >= 3000 AND ProfileId < 10000"), "0");
}

TEST_F(SettingsSaving, ChangesOfADatabaseWithDamagedLinksAreNotLost) {
  Sql("DROP TRIGGER ProfileUpdateKeepsChains; UPDATE Profiles SET LinkProfile = 2001 WHERE ProfileId = 1");
  ProfileOf(2002).SetUserId(L"x");
  ProfileOf(2002).SetState(ChangeState::Changed);
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT UserId FROM Profiles WHERE ProfileId = 2002"), "x");
}

TEST_F(SettingsSaving, AListThatCannotBeReadIsNotSavedWithoutItsRest) {
  ProfileOf(2001).SetDefaultAutostart(false);
  ProfileOf(2001).SetState(ChangeState::Changed);
  Sql("ALTER TABLE AutoStart RENAME TO Hidden");
  SaveFails(L"Nothing was saved: the settings database is incomplete.");
  Sql("ALTER TABLE Hidden RENAME TO AutoStart; ALTER TABLE Preferences RENAME TO Hidden");
  ProfileOf(2001).SetDefaultPreferences(false);
  SaveFails(L"Nothing was saved: the settings database is incomplete.");
  Sql("ALTER TABLE Hidden RENAME TO Preferences");
  SaveSucceeds();
}

TEST_F(SettingsSaving, AfterAFailureAllIsSavedByTheNextTry) {
  PreferenceOf(2004, PreferenceId::AutoConnect)->SetValue(Preference::kOff);
  {
    const FileLock otherProgram(file_, "BEGIN IMMEDIATE");
    SaveFails(L"Nothing was saved: the settings database is in use by another program.");
  }
  SaveSucceeds();
  EXPECT_EQ(Sql("SELECT State FROM Preferences WHERE ProfileId = 2004 AND PreferenceId = 1014"), "1");
  SaveSucceeds();
  EXPECT_THAT(report_.changes, IsEmpty()) << "saved already";
}
