#include "Database/Profiles/Profile.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <stdexcept>
#include <type_traits>

#include "Database/Profiles/ProfileIdManager.h"
#include "Database/SQLite/SQLite.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/Database/SQLite/MemberText.h"
#include "tests/support/AllocationTally.h"
#include "tests/support/FakeDatabasePlatform.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TemporaryFolder.h"

namespace {

struct Column {
  const wchar_t* name;
  uint32_t kind;
  std::wstring text;  // the default, as text
};

// The format of the profiles table, written down a second time.
const std::vector<Column> kColumns = {
    {L"ProfileId", 7, L"4242"},
    {L"Name", 1, L""},
    {L"LinkProfile", 8, L"0"},
    {L"LinkService", 3, L"0"},
    {L"ActualService", 3, L"0"},
    {L"Account", 1, L""},
    {L"UserId", 1, L""},
    {L"EncryptedPassword", 1, L""},
    {L"SavePassword", 5, L"false"},
    {L"HideSavePassword", 5, L"false"},
    {L"Hidden", 5, L"false"},
    {L"UseSoftID", 5, L"false"},
    {L"DNS1Setting", 2, L"a"},
    {L"DNS2Setting", 2, L"a"},
    {L"DomainNameSetting", 2, L"a"},
    {L"WINS1Setting", 2, L"a"},
    {L"WINS2Setting", 2, L"a"},
    {L"SearchListSetting", 2, L"n"},
    {L"AutoProxySetting", 2, L"a"},
    {L"ManualProxySetting", 2, L"a"},
    {L"ProxyExceptionsSetting", 2, L"a"},
    {L"DefaultPreferences", 5, L"true"},
    {L"DefaultTimeouts", 5, L"true"},
    {L"DefaultAutostart", 5, L"true"},
    {L"DefaultProxy", 5, L"true"},
    {L"SMUserMayOverrideAutoReconnectDefaults", 5, L"true"},
    {L"OverrideAutoReconnectDefaults", 5, L"false"},
    {L"DurationTime", 3, L"0"},
    {L"ThresholdOnOff", 5, L"false"},
    {L"ThresholdBytes", 3, L"0"},
    {L"ThresholdTimeOut", 3, L"0"},
    {L"WarnTime", 3, L"0"},
    {L"SMIdleTime", 3, L"0"},
    {L"AuthProtocol", 3, L"0"},
    {L"HelpPhoneNumber", 1, L""},
    {L"HelpURL", 1, L""},
    {L"HelpEMail", 1, L""},
    {L"HelpdeskText", 1, L""},
    {L"SMSessionTime", 3, L"0"},
    {L"WarnPasswordExpired", 5, L"true"},
    {L"SMThresholdTime", 3, L"0"},
    {L"SMThresholdBytes", 3, L"0"},
    {L"DefaultMTU", 3, L"0"},
    {L"AllowAccessExceptions", 5, L"false"},
    {L"AllowLocalSubnetAccess", 5, L"false"},
    {L"BeforePollingFrequency", 3, L"0"},
    {L"AfterPollingFrequency", 3, L"0"},
    {L"AfterAllowedFailures", 3, L"0"},
    {L"CertIdOID", 1, L""},
    {L"DefaultVpnMobilityMode", 5, L"false"},
    {L"OverrideVpnMobilityMode", 5, L"false"},
    {L"UseOverrideVpnMobilityMode", 5, L"false"},
    {L"VpnMobilityUsesDefaultRoute", 5, L"false"},
    {L"FirstVpnMobilityIface", 3, L"0"},
    {L"SecondVpnMobilityIface", 3, L"0"},
    {L"ThirdVpnMobilityIface", 3, L"0"},
    {L"FourthVpnMobilityIface", 3, L"0"},
    {L"DiscInetAfterVpnRoam", 5, L"false"},
    {L"IPSecAttemptsBeforeSSL", 3, L"1"},
    {L"IpVersionAttempts", 3, L"0"},
    {L"AutoReconnectInternet", 5, L"false"},
    {L"SMAutoReconnectMode", 5, L"false"},
    {L"OverrideARMode", 5, L"false"},
    {L"SMAutoSwitchWiFiMode", 5, L"false"},
    {L"OverrideASWiFiMode", 5, L"false"},
    {L"SMPromptUserToSwitch", 5, L"false"},
    {L"OverridePromptUserToSwitch", 5, L"false"},
    {L"SMSwitchInterval", 3, L"0"},
    {L"OverrideSwitchInterval", 3, L"0"},
    {L"SMSignalStrength", 3, L"0"},
    {L"OverrideSignalStrength", 3, L"0"},
    {L"AdvancedAutoReconnectSettings", 3, L"0"},
    {L"CredentialLessInternetProfile", 5, L"false"},
    {L"ASWiFiSelectionInSeconds", 3, L"0"},
    {L"ASWiFiRememberSelection", 5, L"false"},
    {L"Domain", 1, L""},
    {L"HexDigCertHash", 1, L""},
    {L"SecondaryAuthCertHash", 1, L""},
    {L"PasswordAuthMethod", 3, L"0"},
    {L"PasswordFormat", 3, L"0"},
    {L"SavePwdDuration", 3, L"0"},
    {L"LastPwdTypedTime", 3, L"0"},
    {L"AuthProviderCLSID", 1, L""},
    {L"SelectedTokenName", 1, L""},
    {L"SessionToken", 1, L""},
    {L"STObtainedTimeInSeconds", 4, L"0"},
    {L"STLifeTime", 3, L"0"},
    {L"STValidUnits", 2, L"M"},
    {L"ClearSTOnUserDisconnect", 5, L"false"},
    {L"SmLpeEnabled", 5, L"true"},
};

constexpr uint32_t kId = 4242;

const ColumnBinding& ColumnNamed(std::wstring_view name) {
  const auto bindings = Profile(kId).GetBindings();
  const auto binding = std::ranges::find(bindings, name, &ColumnBinding::name);
  if (binding == bindings.end()) throw std::invalid_argument(ToUtf8(name));
  return *binding;
}

// What a page takes the value of a column for.
template <typename Value>
Value Member(const Profile& profile, std::wstring_view name) {
  const ColumnValue value = ColumnNamed(name).read(profile);
  if constexpr (std::is_same_v<Value, std::wstring>) {
    return std::get<std::wstring>(value);
  } else {
    return static_cast<Value>(std::get<int64_t>(value));
  }
}

template <typename Value>
void SetMember(Profile& profile, std::wstring_view name, Value value) {
  if constexpr (std::is_same_v<Value, std::wstring>) {
    ColumnNamed(name).write(profile, value);
  } else {
    ColumnNamed(name).write(profile, static_cast<int64_t>(value));
  }
}

void ExpectColumns(const Profile& profile, const std::vector<Column>& expected) {
  const auto bindings = profile.GetBindings();
  ASSERT_EQ(bindings.size(), expected.size());
  for (size_t index = 0; index < expected.size(); ++index) {
    EXPECT_EQ(bindings[index].name, expected[index].name);
    EXPECT_EQ(static_cast<uint32_t>(bindings[index].kind), expected[index].kind) << ToUtf8(expected[index].name);
    EXPECT_EQ(MemberText(profile, bindings[index]), expected[index].text) << ToUtf8(expected[index].name);
  }
}

// A value that is the default of no column, different for each column where the type allows.
std::wstring UnusualText(const Column& column, size_t index) {
  switch (static_cast<ColumnKind>(column.kind)) {
    case ColumnKind::Text:
      return L"text of " + std::wstring(column.name);
    case ColumnKind::Character:
      return std::wstring(1, static_cast<wchar_t>(L'0' + index));
    case ColumnKind::Boolean:
      return column.text == L"true" ? L"false" : L"true";
    default:
      return std::to_wstring(1000 + index);
  }
}

std::vector<Column> UnusualColumns() {
  std::vector<Column> columns = kColumns;
  for (size_t index = 0; index < columns.size(); ++index) columns[index].text = UnusualText(columns[index], index);
  return columns;
}

template <typename Value>
Value Unusual() {
  if constexpr (std::is_same_v<Value, std::wstring>) {
    return L"text";
  } else if constexpr (std::is_same_v<Value, wchar_t>) {
    return L'#';
  } else {
    return 31;
  }
}

// Changing the member, and nothing else, must change what the getter gives.
template <typename Value>
void ExpectGetter(std::wstring_view name, Value (Profile::*getter)() const) {
  Profile profile(kId);
  Value expected = Member<Value>(profile, name);
  EXPECT_EQ((profile.*getter)(), expected) << ToUtf8(name);
  if constexpr (std::is_same_v<Value, bool>) {
    expected = !expected;
  } else {
    expected = Unusual<Value>();
  }
  SetMember(profile, name, expected);
  EXPECT_EQ((profile.*getter)(), expected) << ToUtf8(name);
}

// The setter must change its member and no other, and not the change state.
template <typename Value>
void ExpectSetter(std::wstring_view name, void (Profile::*setter)(Value)) {
  Profile profile(kId);
  std::vector<Column> expected = kColumns;
  const auto column = std::find_if(expected.begin(), expected.end(),
                                   [name](const Column& candidate) { return candidate.name == name; });
  ASSERT_NE(column, expected.end());
  if constexpr (std::is_same_v<Value, bool>) {
    const bool changed = column->text != L"true";
    (profile.*setter)(changed);
    column->text = changed ? L"true" : L"false";
  } else {
    (profile.*setter)(Unusual<Value>());
    if constexpr (std::is_same_v<Value, std::wstring>) {
      column->text = L"text";
    } else {
      column->text = std::is_same_v<Value, wchar_t> ? L"#" : L"31";
    }
  }
  ExpectColumns(profile, expected);
  EXPECT_EQ(profile.GetState(), ChangeState::Unchanged);
}

}  // namespace

TEST(Profile, HasItsNinetyColumnsInOrderWithTheirDefaults) {
  ASSERT_EQ(kColumns.size(), 90u);
  ExpectColumns(Profile(kId), kColumns);
}

TEST(Profile, MarksIdAndNameOnly) {
  const Profile profile(kId);
  for (const ColumnBinding& binding : profile.GetBindings()) {
    const bool marked = binding.name == L"ProfileId" || binding.name == L"Name";
    EXPECT_EQ(binding.marker, marked ? 1u : 0u) << ToUtf8(binding.name);
  }
}

TEST(Profile, StartsUnchangedWithoutAttachment) {
  const Profile profile(kId);
  EXPECT_EQ(profile.GetState(), ChangeState::Unchanged);
  EXPECT_EQ(profile.GetAttachment(), nullptr);
  EXPECT_EQ(profile.GetProfileId(), kId);
}

// Ten thousand profiles must fit easily.
TEST(Profile, CostsThreeAllocationsAndTwoKilobytesAtMost) {
  std::vector<std::shared_ptr<Profile>> profiles(2);
  const AllocationTally tally;
  profiles[0] = std::make_shared<Profile>(kId);
  EXPECT_LE(tally.Allocations(), 3u);
  EXPECT_LE(tally.Bytes(), 2048u);
  EXPECT_GE(tally.Bytes(), sizeof(Profile));
  profiles[1] = std::make_shared<Profile>(*profiles[0]);
  EXPECT_LE(tally.Allocations(), 6u);
  EXPECT_LE(tally.Bytes(), 4096u);
}

TEST(Profile, IsCountedByATallyThatSeesEveryAllocation) {
  std::vector<std::shared_ptr<std::array<char, 3000>>> blocks(2);
  const AllocationTally tally;
  EXPECT_EQ(tally.Allocations(), 0u);
  for (auto& block : blocks) block = std::make_shared<std::array<char, 3000>>();
  EXPECT_EQ(tally.Allocations(), 2u);
  EXPECT_GE(tally.Bytes(), 6000u);
  blocks.clear();
  EXPECT_EQ(tally.Allocations(), 2u);
}

TEST(Profile, FollowsTheDefaultsOfEveryPageAtFirst) {
  const Profile profile(kId);
  EXPECT_TRUE(profile.GetDefaultPreferences());
  EXPECT_TRUE(profile.GetDefaultTimeouts());
  EXPECT_TRUE(profile.GetDefaultAutostart());
  EXPECT_TRUE(profile.GetDefaultProxy());
}

TEST(Profile, TakesConsecutiveNewIds) {
  Singleton<ProfileIdManager>::Get()->SetUsed({2004});
  EXPECT_EQ(Profile(10000).GetProfileId(), 2005u);
  EXPECT_EQ(Profile(10000).GetProfileId(), 2006u);
  EXPECT_EQ(Profile(9999).GetProfileId(), 9999u);
  EXPECT_EQ(Profile(0).GetProfileId(), 0u);
  EXPECT_EQ(Profile(10000).GetProfileId(), 2007u);
}

TEST(Profile, KeepsItsFirstChangeStateExceptForARemoval) {
  Profile profile(kId);
  profile.SetState(ChangeState::Changed);
  EXPECT_EQ(profile.GetState(), ChangeState::Changed);
  Profile renamed(kId);
  renamed.SetState(ChangeState::Renamed);
  renamed.SetState(ChangeState::Changed);
  EXPECT_EQ(renamed.GetState(), ChangeState::Renamed);
  for (Profile* removed : {&profile, &renamed}) {
    removed->SetState(ChangeState::Removed);
    EXPECT_EQ(removed->GetState(), ChangeState::Removed);
  }
}

TEST(Profile, LoadsEachColumnIntoItsMember) {
  const LogCapture log;
  const FakeDatabasePlatform platform;
  const TemporaryFolder folder;
  const std::vector<Column> stored = UnusualColumns();
  std::wstring names;
  std::wstring values;
  for (const Column& column : stored) {
    const std::wstring separator = names.empty() ? L"" : L", ";
    names += separator + column.name;
    const std::wstring& text = column.text;
    values += separator + L"'" + (text == L"true" ? L"1" : text == L"false" ? L"0" : text) + L"'";
  }
  sqlite3* created = nullptr;
  sqlite3_open(ToUtf8(folder.File(L"Wayline.db")).c_str(), &created);
  const std::string script = ToUtf8(L"create table Profiles (" + names + L"); insert into Profiles values (" + values +
                                    L"); update Profiles set ProfileId = 1000, LinkProfile = 0;");
  ASSERT_EQ(sqlite3_exec(created, script.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(created);

  SQLite sqlite;
  ASSERT_EQ(sqlite.Open(folder.Path().wstring(), L""), SQLITE_OK);
  Profile profile(kId);
  EXPECT_EQ(sqlite.LoadHierarchical(L"Profiles", L"where ProfileId = @ProfileId", 1000, profile), SQLITE_DONE);
  sqlite.GetDatabase()->Close();
  std::vector<Column> expected = stored;
  expected[2].text = L"0";
  ExpectColumns(profile, expected);
  EXPECT_EQ(profile.GetState(), ChangeState::Unchanged);
}

TEST(Profile, CopiesEveryMember) {
  int attached = 0;
  Profile original(kId);
  const std::vector<Column> unusual = UnusualColumns();
  for (size_t index = 0; index < unusual.size(); ++index) {
    const ColumnBinding& binding = original.GetBindings()[index];
    switch (binding.kind) {
      case ColumnKind::Text:
        binding.write(original, unusual[index].text);
        break;
      case ColumnKind::Character:
        binding.write(original, int64_t{unusual[index].text[0]});
        break;
      case ColumnKind::Boolean:
        binding.write(original, int64_t{unusual[index].text == L"true"});
        break;
      default:
        binding.write(original, int64_t{std::stoi(unusual[index].text)});
    }
  }
  original.SetState(ChangeState::Renamed);
  original.SetAttachment(&attached);

  Profile copy(original);
  Profile assigned(1);
  assigned = original;
  original.Reset();
  for (Profile* other : {&copy, &assigned}) {
    ExpectColumns(*other, unusual);
    EXPECT_EQ(other->GetState(), ChangeState::Renamed);
    EXPECT_EQ(other->GetAttachment(), &attached);
  }
}

TEST(Profile, ResetsItsColumnsOnly) {
  Profile profile(kId);
  profile.SetName(L"office");
  profile.SetDefaultProxy(false);
  profile.SetState(ChangeState::Changed);
  profile.Reset();
  std::vector<Column> expected = kColumns;
  expected[0].text = L"0";
  ExpectColumns(profile, expected);
  EXPECT_EQ(profile.GetState(), ChangeState::Changed);
}

TEST(Profile, GivesEachPageItsColumns) {
  ExpectGetter(L"ProfileId", &Profile::GetProfileId);
  ExpectGetter(L"Name", &Profile::GetName);
  ExpectGetter(L"LinkProfile", &Profile::GetLinkProfile);
  ExpectGetter(L"LinkService", &Profile::GetLinkService);
  ExpectGetter(L"Account", &Profile::GetAccount);
  ExpectGetter(L"UserId", &Profile::GetUserId);
  ExpectGetter(L"Hidden", &Profile::GetHidden);
  ExpectGetter(L"AutoProxySetting", &Profile::GetAutoProxySetting);
  ExpectGetter(L"ManualProxySetting", &Profile::GetManualProxySetting);
  ExpectGetter(L"ProxyExceptionsSetting", &Profile::GetProxyExceptionsSetting);
  ExpectGetter(L"DefaultPreferences", &Profile::GetDefaultPreferences);
  ExpectGetter(L"DefaultTimeouts", &Profile::GetDefaultTimeouts);
  ExpectGetter(L"DefaultAutostart", &Profile::GetDefaultAutostart);
  ExpectGetter(L"DefaultProxy", &Profile::GetDefaultProxy);
  ExpectGetter(L"SMUserMayOverrideAutoReconnectDefaults", &Profile::GetSMUserMayOverrideAutoReconnectDefaults);
  ExpectGetter(L"OverrideAutoReconnectDefaults", &Profile::GetOverrideAutoReconnectDefaults);
  ExpectGetter(L"ThresholdOnOff", &Profile::GetThresholdOnOff);
  ExpectGetter(L"ThresholdBytes", &Profile::GetThresholdBytes);
  ExpectGetter(L"SMThresholdBytes", &Profile::GetSMThresholdBytes);
  ExpectGetter(L"SMAutoReconnectMode", &Profile::GetSMAutoReconnectMode);
  ExpectGetter(L"OverrideARMode", &Profile::GetOverrideARMode);
  ExpectGetter(L"SMAutoSwitchWiFiMode", &Profile::GetSMAutoSwitchWiFiMode);
  ExpectGetter(L"OverrideASWiFiMode", &Profile::GetOverrideASWiFiMode);
  ExpectGetter(L"SMPromptUserToSwitch", &Profile::GetSMPromptUserToSwitch);
  ExpectGetter(L"OverridePromptUserToSwitch", &Profile::GetOverridePromptUserToSwitch);
  ExpectGetter(L"SMSwitchInterval", &Profile::GetSMSwitchInterval);
  ExpectGetter(L"OverrideSwitchInterval", &Profile::GetOverrideSwitchInterval);
  ExpectGetter(L"SMSignalStrength", &Profile::GetSMSignalStrength);
  ExpectGetter(L"OverrideSignalStrength", &Profile::GetOverrideSignalStrength);
  ExpectGetter(L"AdvancedAutoReconnectSettings", &Profile::GetAdvancedAutoReconnectSettings);
  ExpectGetter(L"HexDigCertHash", &Profile::GetHexDigCertHash);
}

TEST(Profile, StoresWhatPagesChange) {
  ExpectSetter<std::wstring>(L"Name", &Profile::SetName);
  ExpectSetter<int32_t>(L"LinkService", &Profile::SetLinkService);
  ExpectSetter<std::wstring>(L"Account", &Profile::SetAccount);
  ExpectSetter<std::wstring>(L"UserId", &Profile::SetUserId);
  ExpectSetter<bool>(L"Hidden", &Profile::SetHidden);
  ExpectSetter<wchar_t>(L"AutoProxySetting", &Profile::SetAutoProxySetting);
  ExpectSetter<wchar_t>(L"ManualProxySetting", &Profile::SetManualProxySetting);
  ExpectSetter<wchar_t>(L"ProxyExceptionsSetting", &Profile::SetProxyExceptionsSetting);
  ExpectSetter<bool>(L"DefaultPreferences", &Profile::SetDefaultPreferences);
  ExpectSetter<bool>(L"DefaultTimeouts", &Profile::SetDefaultTimeouts);
  ExpectSetter<bool>(L"DefaultAutostart", &Profile::SetDefaultAutostart);
  ExpectSetter<bool>(L"DefaultProxy", &Profile::SetDefaultProxy);
  ExpectSetter<bool>(L"OverrideAutoReconnectDefaults", &Profile::SetOverrideAutoReconnectDefaults);
  ExpectSetter<bool>(L"ThresholdOnOff", &Profile::SetThresholdOnOff);
  ExpectSetter<int32_t>(L"ThresholdBytes", &Profile::SetThresholdBytes);
  ExpectSetter<bool>(L"OverrideARMode", &Profile::SetOverrideARMode);
  ExpectSetter<bool>(L"OverrideASWiFiMode", &Profile::SetOverrideASWiFiMode);
  ExpectSetter<bool>(L"OverridePromptUserToSwitch", &Profile::SetOverridePromptUserToSwitch);
  ExpectSetter<int32_t>(L"OverrideSwitchInterval", &Profile::SetOverrideSwitchInterval);
  ExpectSetter<int32_t>(L"OverrideSignalStrength", &Profile::SetOverrideSignalStrength);
  ExpectSetter<int32_t>(L"AdvancedAutoReconnectSettings", &Profile::SetAdvancedAutoReconnectSettings);
  ExpectSetter<std::wstring>(L"HexDigCertHash", &Profile::SetHexDigCertHash);
}

TEST(Profile, GivesTimeoutsAsSignExtendedSeconds) {
  Profile profile(kId);
  SetMember<int32_t>(profile, L"DurationTime", -28800);
  SetMember<int32_t>(profile, L"ThresholdTimeOut", std::numeric_limits<int32_t>::min());
  SetMember<int32_t>(profile, L"WarnTime", 60);
  SetMember<int32_t>(profile, L"SMIdleTime", 120);
  SetMember<int32_t>(profile, L"SMSessionTime", 1800);
  SetMember<int32_t>(profile, L"SMThresholdTime", 10);
  EXPECT_EQ(profile.GetDurationTime().count(), -28800);
  EXPECT_EQ(profile.GetThresholdTimeOut().count(), -2147483648);
  EXPECT_EQ(profile.GetWarnTime(), std::chrono::minutes(1));
  EXPECT_EQ(profile.GetSMIdleTime(), std::chrono::minutes(2));
  EXPECT_EQ(profile.GetSMSessionTime(), std::chrono::minutes(30));
  EXPECT_EQ(profile.GetSMThresholdTime(), std::chrono::seconds(600));
}

TEST(Profile, StoresTimeoutsAs32Bits) {
  Profile profile(kId);
  profile.SetDurationTime(std::chrono::hours(2));
  profile.SetThresholdTimeOut(Profile::Seconds(-28800));
  profile.SetWarnTime(Profile::Seconds(0x100000005));
  EXPECT_EQ(Member<int32_t>(profile, L"DurationTime"), 7200);
  EXPECT_EQ(Member<int32_t>(profile, L"ThresholdTimeOut"), -28800);
  EXPECT_EQ(Member<int32_t>(profile, L"WarnTime"), 5);
  EXPECT_EQ(profile.GetState(), ChangeState::Unchanged);
}
