// What is chosen on the sheet, as it is found in the settings database afterwards.

#include <gmock/gmock.h>

#include "LoginProperties/Preferences/PreferenceControls.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Timeouts/TimeoutControls.h"
#include "LoginProperties/WiFiSwitching/AutoReconnectControls.h"
#include "tests/support/FileBytes.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TreeItems.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/OtherConnection.h"
#include "tests/ui/SaveContext.h"
#include "tests/ui/SheetDriver.h"
#include "WaylineDll/Host.h"
#include "WaylineDll/Store/RecordRows.h"

using testing::ElementsAre;
using Seconds = Profile::Seconds;

namespace {

constexpr uint32_t kFollowsDefaults = 2001;  // "Work" of the sample data

// Profiles of the sample data; the last has preferences of its own, in which "Automatically connect" is on.
constexpr const wchar_t* kThreeProfiles[] = {L"Work", L"Work 2", L"Z\u00fcrich Office"};

int AutoConnectImage(const SheetDriver& sheet) {
  const HWND tree = sheet.Control(IDC_PREFERENCE_TREE);
  return TreeItemImage(tree, FindTreeItem(tree, L"Automatically connect if password saved"));
}

// Turns "Automatically connect" round for three profiles, with a look at another tab after each of them.
void ToggleForThreeProfiles(SheetDriver& sheet) {
  for (const wchar_t* profile : kThreeProfiles) {
    sheet.SelectTab(L"Preferences");
    sheet.Pick(IDC_PROFILE_COMBO, profile);
    if (!sheet.IsChecked(IDC_OVERRIDE_CHECK)) sheet.Click(IDC_OVERRIDE_CHECK);
    const int before = AutoConnectImage(sheet);
    const HWND tree = sheet.Control(IDC_PREFERENCE_TREE);
    TreeView_SelectItem(tree, FindTreeItem(tree, L"Automatically connect if password saved"));
    SendMessageW(tree, WM_CHAR, L' ', 0);
    ASSERT_TRUE(WaitUntil([&] { return AutoConnectImage(sheet) != before; }));
    sheet.SelectTab(L"Proxy");
  }
}

// Images of "Automatically connect" for the three profiles.
std::vector<int> AutoConnectOfThreeProfiles(SheetDriver& sheet) {
  std::vector<int> images;
  sheet.SelectTab(L"Preferences");
  for (const wchar_t* profile : kThreeProfiles) {
    sheet.Pick(IDC_PROFILE_COMBO, profile);
    images.push_back(AutoConnectImage(sheet));
  }
  return images;
}

constexpr int kOff = 1;
constexpr int kOn = 2;
constexpr char kStoredAutoConnect[] =
    "SELECT group_concat(Choice) FROM (SELECT ProfileId || ':' || State AS Choice FROM Preferences "
    "WHERE PreferenceId = 1014 AND ProfileId IN (2001, 2002, 2004) ORDER BY ProfileId)";

class Saving : public testing::Test {
 protected:
  Saving() {
    EXPECT_EQ(OpenSettings(file), std::nullopt);
    Load();
  }
  ~Saving() override { CloseSettings(); }

  // As the client does at every start.
  void Load() {
    context = {};
    context.mode = SheetMode::Full;
    EXPECT_EQ(LoadProfiles(context.profiles), std::nullopt);
    context.currentProfile = context.profiles.at(kFollowsDefaults);
  }

  TemporaryFolder folder;
  std::wstring file = folder.File(L"Wayline.db");
  LoginPropertiesContext context;
};

}  // namespace

TEST_F(Saving, TimeoutsChosenOnTheSheetAreThereAfterARestart) {
  {
    SheetDriver sheet(context);
    sheet.SelectTab(L"Timeouts");
    sheet.Click(IDC_OVERRIDE_CHECK);
    ASSERT_TRUE(sheet.IsChecked(IDC_TIMEOUT_DURATION_CHECK)) << "inherited";
    sheet.Pick(IDC_TIMEOUT_DURATION, L" 2 hours");
    sheet.Pick(IDC_TIMEOUT_WARNING, L" 3 minutes");
    sheet.PressOk();
    ASSERT_EQ(sheet.Result(), kSheetConfirmed);
  }
  EXPECT_THAT(SaveContext(context),
              ElementsAre(RecordChange{RecordKind::Profile, kFollowsDefaults, ChangeState::Changed}));

  CloseSettings();
  ASSERT_EQ(OpenSettings(file), std::nullopt);
  Load();
  EXPECT_FALSE(context.currentProfile->GetDefaultTimeouts());
  EXPECT_EQ(context.currentProfile->GetDurationTime(), Seconds(7200));
  EXPECT_EQ(context.currentProfile->GetWarnTime(), Seconds(180));
  EXPECT_EQ(context.currentProfile->GetState(), ChangeState::Unchanged);

  SheetDriver sheet(context);
  sheet.SelectTab(L"Timeouts");
  EXPECT_TRUE(sheet.IsChecked(IDC_OVERRIDE_CHECK));
  EXPECT_EQ(sheet.Selected(IDC_TIMEOUT_DURATION), L" 2 hours");
  EXPECT_EQ(sheet.Selected(IDC_TIMEOUT_WARNING), L" 3 minutes");
}

TEST_F(Saving, OfTheOtherProfilesNothingChanges) {
  // Records of its own: the sheet edits those of the context.
  ProfileTable before;
  ASSERT_EQ(LoadProfiles(before), std::nullopt);
  {
    SheetDriver sheet(context);
    sheet.SelectTab(L"Timeouts");
    sheet.Click(IDC_OVERRIDE_CHECK);
    sheet.Pick(IDC_TIMEOUT_DURATION, L" 1 hour");
    sheet.PressOk();
    ASSERT_EQ(sheet.Result(), kSheetConfirmed);
  }
  EXPECT_THAT(SaveContext(context),
              ElementsAre(RecordChange{RecordKind::Profile, kFollowsDefaults, ChangeState::Changed}));
  ProfileTable after;
  ASSERT_EQ(LoadProfiles(after), std::nullopt);
  ASSERT_EQ(after.size(), before.size());
  for (const auto& [id, profile] : after) {
    if (id == kFollowsDefaults) continue;
    EXPECT_EQ(ColumnNames(DifferingColumns(*profile, *before.at(id)).columns), L"") << id;
  }
}

TEST_F(Saving, WiFiSwitchingChosenOnTheSheetIsThereAfterARestart) {
  ProfileTable before;
  ASSERT_EQ(LoadProfiles(before), std::nullopt);
  {
    SheetDriver sheet(context);
    sheet.SelectTab(L"Wi-Fi Switching");
    ASSERT_EQ(sheet.Text(IDC_RECONNECT_STRENGTH), L"60") << "inherited";
    sheet.Click(IDC_OVERRIDE_CHECK);
    sheet.Click(IDC_RECONNECT_SWITCH_CHECK);
    sheet.Click(IDC_RECONNECT_HOTSPOT_CHECK);
    sheet.Focus(IDC_RECONNECT_STRENGTH);
    sheet.Type(L"50");
    sheet.Focus(IDC_RECONNECT_INTERVAL);
    sheet.Type(L"20");
    sheet.Focus(IDC_PROFILE_COMBO);
    sheet.Click(IDC_RECONNECT_AT_ONCE_RADIO);
    sheet.PressOk();
    ASSERT_EQ(sheet.Result(), kSheetConfirmed);
  }
  EXPECT_THAT(SaveContext(context),
              ElementsAre(RecordChange{RecordKind::Profile, kFollowsDefaults, ChangeState::Changed}));

  CloseSettings();
  ASSERT_EQ(OpenSettings(file), std::nullopt);
  Load();
  for (const auto& [id, profile] : context.profiles) {
    EXPECT_EQ(ColumnNames(DifferingColumns(*profile, *before.at(id)).columns),
              id == kFollowsDefaults ? L"OverrideAutoReconnectDefaults, OverrideARMode, OverrideASWiFiMode, "
                                       L"OverrideSwitchInterval, OverrideSignalStrength, AdvancedAutoReconnectSettings"
                                     : L"")
        << id;
  }
  SheetDriver sheet(context);
  sheet.SelectTab(L"Wi-Fi Switching");
  EXPECT_TRUE(sheet.IsChecked(IDC_OVERRIDE_CHECK));
  EXPECT_TRUE(sheet.IsChecked(IDC_RECONNECT_SWITCH_CHECK));
  EXPECT_TRUE(sheet.IsChecked(IDC_RECONNECT_HOTSPOT_CHECK));
  EXPECT_FALSE(sheet.IsChecked(IDC_RECONNECT_PROMPT_CHECK));
  EXPECT_EQ(sheet.Text(IDC_RECONNECT_INTERVAL), L"20");
  EXPECT_EQ(sheet.Text(IDC_RECONNECT_STRENGTH), L"50");
  EXPECT_TRUE(sheet.IsChecked(IDC_RECONNECT_AT_ONCE_RADIO));
}

// The page counts every profile that it has shown as changed; but no setting of it differs.
TEST_F(Saving, WiFiSwitchingThatWasOnlyLookedAtWritesNothing) {
  const std::string before = FileBytes(file);
  {
    SheetDriver sheet(context);
    sheet.SelectTab(L"Wi-Fi Switching");
    sheet.PressOk();
    ASSERT_EQ(sheet.Result(), kSheetConfirmed);
  }
  EXPECT_EQ(context.currentProfile->GetState(), ChangeState::Changed);
  EXPECT_THAT(SaveContext(context), testing::IsEmpty());
  CloseSettings();
  EXPECT_EQ(FileBytes(file), before);
}

TEST_F(Saving, CancelLeavesTheDatabaseByteForByteAsItWas) {
  const std::string before = FileBytes(file);
  ASSERT_FALSE(before.empty());
  {
    SheetDriver sheet(context);
    sheet.SelectTab(L"Timeouts");
    sheet.Click(IDC_OVERRIDE_CHECK);
    sheet.Pick(IDC_TIMEOUT_DURATION, L" 2 hours");
    sheet.SelectTab(L"General");
    sheet.PressCancel();
    ASSERT_NE(sheet.Result(), kSheetConfirmed);
  }
  // The records are shared with the sheet and carry its edits, so that they are dropped instead of being saved.
  EXPECT_EQ(context.profiles.at(kFollowsDefaults)->GetState(), ChangeState::Changed);
  CloseSettings();
  EXPECT_EQ(FileBytes(file), before);
}

TEST_F(Saving, TogglesOnThreeProfilesAreAllSavedByOneOk) {
  ASSERT_EQ(StoredValue(file, kStoredAutoConnect), "2004:2");
  {
    SheetDriver sheet(context);
    ToggleForThreeProfiles(sheet);
    EXPECT_THAT(AutoConnectOfThreeProfiles(sheet), ElementsAre(kOn, kOn, kOff));
    sheet.PressOk();
    ASSERT_EQ(sheet.Result(), kSheetConfirmed);
  }
  SaveContext(context);
  EXPECT_EQ(StoredValue(file, kStoredAutoConnect), "2001:2,2002:2,2004:1");
}

TEST_F(Saving, TogglesOnThreeProfilesAreAllDroppedByCancel) {
  const std::string before = FileBytes(file);
  {
    SheetDriver sheet(context);
    ToggleForThreeProfiles(sheet);
    sheet.PressCancel();
    ASSERT_EQ(sheet.Result(), kSheetCancelled);
  }
  DiscardChanges();
  Load();
  SheetDriver sheet(context);
  EXPECT_THAT(AutoConnectOfThreeProfiles(sheet), ElementsAre(kOff, kOff, kOn));
  sheet.PressOk();
  ASSERT_EQ(sheet.Result(), kSheetConfirmed);
  EXPECT_THAT(SaveContext(context), testing::IsEmpty());
  CloseSettings();
  EXPECT_EQ(FileBytes(file), before);
}

TEST_F(Saving, OkWithoutAnyChangeWritesNothing) {
  const std::string before = FileBytes(file);
  {
    SheetDriver sheet(context);
    for (const wchar_t* tab : {L"Preferences", L"Autostart", L"Proxy", L"Timeouts"}) sheet.SelectTab(tab);
    sheet.PressOk();
    ASSERT_EQ(sheet.Result(), kSheetConfirmed);
  }
  for (const RecordChange& change : SaveContext(context)) ADD_FAILURE() << "saved " << change.id;
  CloseSettings();
  EXPECT_EQ(FileBytes(file), before);
}
