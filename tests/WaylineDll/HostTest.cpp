#include "WaylineDll/Host.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <set>

#include "Database/SQLite/SQLiteHandles.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/FileBytes.h"
#include "tests/support/RegisteredService.h"
#include "tests/support/ServiceLog.h"
#include "tests/support/TemporaryFolder.h"
#include "WaylineDll/ActiveProfile.h"
#include "WaylineDll/AutoStart.h"
#include "WaylineDll/Connection.h"
#include "WaylineDll/Preferences.h"

using namespace std::chrono_literals;

namespace {

class HostTest : public testing::Test {
 protected:
  ~HostTest() override { CloseSettings(); }

  // Runs a statement on the file, as another program does.
  void Run(const char* statement) const {
    sqlite3* opened = nullptr;
    EXPECT_EQ(sqlite3_open(ToUtf8(file_).c_str(), &opened), SQLITE_OK);
    const ConnectionHandle connection(opened);
    EXPECT_EQ(sqlite3_exec(opened, statement, nullptr, nullptr, nullptr), SQLITE_OK);
  }

  TemporaryFolder folder_;
  std::wstring file_ = folder_.File(L"Wayline.db");
};

// Values that no time-out has.
constexpr Duration kUntouched{-1};

}  // namespace

TEST_F(HostTest, WithoutADatabaseThereIsNoActiveProfile) {
  EXPECT_EQ(GetActiveProfileIdExoprt(), 0u);
  Duration session = kUntouched;
  Duration idle = kUntouched;
  Duration threshold = kUntouched;
  GetActiveProfileTimeouts2(&session, &idle, &threshold);
  EXPECT_EQ(session, 0s);
  EXPECT_EQ(idle, 0s);
  EXPECT_EQ(threshold, 0s);
}

TEST_F(HostTest, WithoutADatabaseNothingIsLoadedOrSaved) {
  const Failure notOpen = L"No settings database is open.";
  ProfileTable profiles;
  EXPECT_EQ(LoadProfiles(profiles), notOpen);
  SaveReport report;
  EXPECT_EQ(SaveSettings({}, report), notOpen);
}

TEST_F(HostTest, WithoutADatabaseThereAreNoPreferences) {
  for (const auto load : {GetPreferences, GetUserPreferences}) {
    PreferenceTable preferences = {{PreferenceId::AutoConnect, nullptr}};
    EXPECT_FALSE(load(2004, preferences));
    EXPECT_TRUE(preferences.empty());
  }
}

TEST_F(HostTest, TellsThePreferencesInForceAndThoseOfTheUser) {
  ASSERT_EQ(OpenSettings(file_), Failure());
  PreferenceTable preferences;
  EXPECT_TRUE(GetPreferences(10001, preferences));
  EXPECT_EQ(preferences.size(), 27u);
  EXPECT_FALSE(GetUserPreferences(10001, preferences)) << "it shares those of its defaults";
  PreferenceTable inherited;
  EXPECT_TRUE(GetPreferences(2001, inherited));
  inherited.at(PreferenceId::AutoConnect)->SetValue(Preference::kOn);
  EXPECT_FALSE(GetUserPreferences(2001, preferences)) << "nothing is kept while no profiles are loaded";
  EXPECT_TRUE(GetUserPreferences(2004, preferences));
  EXPECT_EQ(preferences.size(), 27u);
}

TEST_F(HostTest, TellsTheTimeoutsOfTheActiveProfileInTheirOrder) {
  ASSERT_EQ(OpenSettings(file_), Failure());
  EXPECT_EQ(GetActiveProfileIdExoprt(), 2001u);
  Duration session = kUntouched;
  Duration idle = kUntouched;
  Duration threshold = kUntouched;
  GetActiveProfileTimeouts2(&session, &idle, &threshold);
  EXPECT_EQ(session, 28800s);
  EXPECT_EQ(idle, 3600s);
  EXPECT_EQ(threshold, 1800s);
}

TEST_F(HostTest, SkipsTimeoutsThatNobodyAsksFor) {
  ASSERT_EQ(OpenSettings(file_), Failure());
  Duration idle = kUntouched;
  GetActiveProfileTimeouts2(nullptr, &idle, nullptr);
  EXPECT_EQ(idle, 3600s);
  GetActiveProfileTimeouts2(nullptr, nullptr, nullptr);
}

TEST_F(HostTest, WithoutADatabaseThereIsNoConnectionAndNoBookmark) {
  EXPECT_EQ(GetFSMState(), FSMState::Disconnected);
  EXPECT_EQ(IsConnected(), 0u);
  EXPECT_EQ(GetActiveProxyLocationId(), 0u);
  std::wstring text = L"untouched";
  bool flag = true;
  EXPECT_FALSE(BookmarkGetString(Bookmark::Index::ShowServerSettings, text));
  EXPECT_FALSE(BookmarkGetBool(Bookmark::Index::ShowServerSettings, flag));
  EXPECT_EQ(text, L"untouched");
  EXPECT_TRUE(flag);
  EXPECT_EQ(SetConnectionState(FSMState::Connected), Failure(L"No settings database is open."));
  EXPECT_EQ(SetBookmark(Bookmark::Index::ShowServerSettings, L"1"), Failure(L"No settings database is open."));
  EXPECT_EQ(GetSettingsFile(), L"");
}

TEST_F(HostTest, TellsTheStateOfTheConnectionThatWasSet) {
  ASSERT_EQ(OpenSettings(file_), Failure());
  EXPECT_EQ(IsConnected(), 0u);
  for (const FSMState state : {FSMState::Connecting, FSMState::Connected, FSMState::Disconnecting}) {
    ASSERT_EQ(SetConnectionState(state), Failure());
    EXPECT_EQ(GetFSMState(), state);
    EXPECT_EQ(IsConnected() != 0, state == FSMState::Connected);
  }
  CloseSettings();
  ASSERT_EQ(OpenSettings(file_, SettingsAccess::Read), Failure());
  EXPECT_EQ(GetFSMState(), FSMState::Disconnecting);
}

TEST_F(HostTest, TellsTheBookmarksThatWereSet) {
  ASSERT_EQ(OpenSettings(file_), Failure());
  bool flag = false;
  EXPECT_TRUE(BookmarkGetBool(Bookmark::Index::ShowServerSettings, flag));
  EXPECT_TRUE(flag);
  ASSERT_EQ(SetBookmark(Bookmark::Index::ShowServerSettings, L"0"), Failure());
  EXPECT_TRUE(BookmarkGetBool(Bookmark::Index::ShowServerSettings, flag));
  EXPECT_FALSE(flag);
  std::wstring text;
  EXPECT_FALSE(BookmarkGetString(Bookmark::Index{77}, text));
  ASSERT_EQ(SetBookmark(Bookmark::Index{77}, L"Z\u00fcrich"), Failure());
  EXPECT_TRUE(BookmarkGetString(Bookmark::Index{77}, text));
  EXPECT_EQ(text, L"Z\u00fcrich");
}

TEST_F(HostTest, StoresAPreferenceOfTheActiveProfile) {
  constexpr PreferenceId kId = PreferenceId::AutoConnect;
  ASSERT_EQ(OpenSettings(file_), Failure());
  const uint32_t active = GetActiveProfileIdExoprt();
  for (const bool on : {true, false, true}) {
    UpdateActiveProfilePreference(kId, on);
    PreferenceTable preferences;
    ASSERT_TRUE(GetUserPreferences(active, preferences));
    ASSERT_TRUE(preferences.contains(kId));
    EXPECT_EQ(preferences.at(kId)->GetValue(), on ? Preference::kOn : Preference::kOff);
    ASSERT_TRUE(GetPreferences(2003, preferences));
    EXPECT_EQ(preferences.at(kId)->GetValue(), Preference::kOff) << "that of another profile";
  }
}

TEST_F(HostTest, WithoutAnActiveProfileNoPreferenceIsStored) {
  const RegisteredService service;
  const ServiceLog log;
  UpdateActiveProfilePreference(PreferenceId::AutoConnect, true);
  ASSERT_EQ(OpenSettings(file_), Failure());
  Run("DELETE FROM ClientState WHERE Name = 'ActiveProfile'");
  ASSERT_EQ(GetActiveProfileIdExoprt(), 0u);
  const std::string before = FileBytes(file_);
  for (const bool on : {true, false}) UpdateActiveProfilePreference(PreferenceId::AutoConnect, on);
  EXPECT_TRUE(FileBytes(file_) == before) << "the file has changed";
  EXPECT_TRUE(log.Has(": Nothing was saved: "));
}

TEST_F(HostTest, GivesEveryNewAutostartEntryAnIdThatNoOtherHas) {
  ASSERT_EQ(OpenSettings(file_), Failure());
  ProfileTable profiles;
  ASSERT_EQ(LoadProfiles(profiles), Failure());
  const auto first = CreateNewItem(2004);
  AutoStartTable own;
  AutoStartTable inherited;
  ASSERT_TRUE(GetAutoStart(2004, own));
  ASSERT_TRUE(GetAutoStart(2003, inherited));
  const auto second = CreateNewItem(2004);
  std::set<int32_t> ids = {first->fields.id, second->fields.id};
  for (const auto& [id, item] : own) ids.insert(item->fields.id);
  for (const auto& [id, item] : inherited) ids.insert(item->fields.id);
  EXPECT_EQ(ids.size(), own.size() + inherited.size() + 2);
}

TEST_F(HostTest, BeginsAnAutostartEntryAsAProgramOfTheFirstPhase) {
  ASSERT_EQ(OpenSettings(file_), Failure());
  const auto item = CreateNewItem(2004);
  EXPECT_EQ(item->fields.profileId, 2004);
  EXPECT_EQ(item->fields.phase, 300);
  EXPECT_EQ(item->fields.order, 0);
  EXPECT_EQ(item->fields.recordType, AutoStartRecordType::Program);
  EXPECT_TRUE(item->fields.modifiable);
  EXPECT_EQ(item->GetState(), ChangeState::Unchanged);
}

TEST_F(HostTest, WithoutADatabaseThereAreNoNewAutostartEntries) { EXPECT_EQ(CreateNewItem(2004), nullptr); }

TEST_F(HostTest, ClosingReleasesTheFile) {
  ASSERT_EQ(OpenSettings(file_), Failure());
  CloseSettings();
  EXPECT_EQ(GetActiveProfileIdExoprt(), 0u);
  EXPECT_TRUE(std::filesystem::remove(std::filesystem::path(file_)));
}

TEST_F(HostTest, KeepsNothingOpenWhenAFileCannotBeUsed) {
  const RegisteredService service;
  const ServiceLog log;
  ASSERT_EQ(OpenSettings(file_), Failure());
  EXPECT_NE(OpenSettings(folder_.File(L"none") + L"\\x.db"), Failure());
  EXPECT_EQ(GetActiveProfileIdExoprt(), 0u);
  EXPECT_TRUE(log.Has("unable to open database file"));
}
