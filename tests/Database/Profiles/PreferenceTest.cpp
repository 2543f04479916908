#include "Database/Profiles/Preference.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "Database/SQLite/SQLite.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/FakeDatabasePlatform.h"
#include "tests/support/TemporaryFolder.h"

namespace {

const PreferenceFields kSample = {PreferenceId::HotspotMap, 2001, 1083, true, true};

void ExpectFields(const Preference& preference, const PreferenceFields& expected) {
  EXPECT_EQ(preference.Fields().preferenceId, expected.preferenceId);
  EXPECT_EQ(preference.Fields().profileId, expected.profileId);
  EXPECT_EQ(preference.Fields().state, expected.state);
  EXPECT_EQ(preference.Fields().visible, expected.visible);
  EXPECT_EQ(preference.Fields().ipsecRequired, expected.ipsecRequired);
}

}  // namespace

TEST(Preference, BindsItsFiveColumnsInOrder) {
  const std::vector<std::pair<std::wstring, ColumnKind>> expected = {{L"PreferenceId", ColumnKind::Integer32},
                                                                     {L"ProfileId", ColumnKind::Integer32},
                                                                     {L"State", ColumnKind::Integer32},
                                                                     {L"Visible", ColumnKind::Boolean},
                                                                     {L"IPSecRequired", ColumnKind::Boolean}};
  const Preference preference;
  ASSERT_EQ(preference.GetBindings().size(), expected.size());
  for (size_t index = 0; index < expected.size(); ++index) {
    EXPECT_EQ(preference.GetBindings()[index].name, expected[index].first);
    EXPECT_EQ(preference.GetBindings()[index].kind, expected[index].second);
    EXPECT_EQ(preference.GetBindings()[index].marker, 0u);
  }
}

TEST(Preference, ReadsItsRow) {
  const FakeDatabasePlatform platform;
  const TemporaryFolder folder;
  sqlite3* created = nullptr;
  sqlite3_open(ToUtf8(folder.File(L"Wayline.db")).c_str(), &created);
  ASSERT_EQ(sqlite3_exec(created,
                         "create table Preferences (PreferenceId, ProfileId, State, Visible, IPSecRequired);"
                         "insert into Preferences values (1082, 2001, 1083, 1, 0);",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
  sqlite3_close(created);

  SQLite sqlite;
  ASSERT_EQ(sqlite.Open(folder.Path().wstring()), SQLITE_OK);
  Preference preference({PreferenceId::AutoConnect, 0, 0, false, true});
  {
    SQLContext context;
    ASSERT_EQ(
        sqlite.Execute(context, L"select PreferenceId, ProfileId, State, Visible, IPSecRequired from Preferences;", {}),
        SQLITE_ROW);
    sqlite.ReadData(context, &preference);
  }
  sqlite.GetDatabase()->Close();
  ExpectFields(preference, {PreferenceId::HotspotMap, 2001, 1083, true, false});
  EXPECT_EQ(preference.GetState(), ChangeState::Unchanged);
}

TEST(Preference, KeepsAllFiveFieldsInACopy) {
  Preference original(kSample);
  original.SetState(ChangeState::New);
  Preference copy(original);
  Preference assigned;
  assigned = original;
  original.SetValue(Preference::kOff);
  ExpectFields(copy, kSample);
  ExpectFields(assigned, kSample);
  EXPECT_EQ(copy.GetState(), ChangeState::New);
  EXPECT_EQ(assigned.GetState(), ChangeState::New);
}

TEST(Preference, IsReachedThroughItsColumnsAsACopyToo) {
  const Preference original(kSample);
  Preference copy(original);
  copy.GetBindings()[4].write(copy, int64_t{0});
  EXPECT_FALSE(copy.Fields().ipsecRequired);
  EXPECT_TRUE(original.Fields().ipsecRequired);
}

TEST(Preference, IsChangedByEveryWriter) {
  Preference value(kSample);
  EXPECT_EQ(value.GetState(), ChangeState::Unchanged);
  value.SetValue(1520);
  EXPECT_EQ(value.GetValue(), 1520);
  EXPECT_EQ(value.GetState(), ChangeState::Changed);

  Preference owner(kSample);
  owner.SetProfileId(2002);
  ExpectFields(owner, {PreferenceId::HotspotMap, 2002, 1083, true, true});
  EXPECT_EQ(owner.GetState(), ChangeState::Changed);
}

TEST(Preference, StaysRemovedWhenWritten) {
  Preference preference(kSample);
  preference.SetState(ChangeState::Removed);
  preference.SetValue(Preference::kOn);
  EXPECT_EQ(preference.GetState(), ChangeState::Removed);
}

TEST(PreferenceTable, IsOrderedByTheNumericId) {
  PreferenceTable table;
  for (const auto id : {PreferenceId::PreferIPv6, PreferenceId::AutoConnect, PreferenceId::VpnMtu}) {
    table[id] = std::make_shared<Preference>(PreferenceFields{.preferenceId = id});
  }
  EXPECT_EQ(table.begin()->first, PreferenceId{1014});
  EXPECT_EQ(table.rbegin()->first, PreferenceId{1514});
}
