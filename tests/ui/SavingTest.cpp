// What is chosen on the sheet, as it is found in the settings database afterwards.

#include <gmock/gmock.h>

#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Timeouts/TimeoutControls.h"
#include "LoginProperties/WiFiSwitching/AutoReconnectControls.h"
#include "tests/support/FileBytes.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/ui/SaveContext.h"
#include "tests/ui/SheetDriver.h"
#include "WaylineDll/Host.h"
#include "WaylineDll/Store/RecordRows.h"

using testing::ElementsAre;
using Seconds = Profile::Seconds;

namespace {

constexpr uint32_t kFollowsDefaults = 2001;  // "Work" of the sample data

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
