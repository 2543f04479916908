// The "Timeouts" page on the real sheet.

#include <gmock/gmock.h>

#include <optional>

#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Timeouts/TimeoutControls.h"
#include "tests/support/ServiceLog.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/ui/SheetDriver.h"
#include "tests/ui/TestContext.h"
#include "WaylineDll/Host.h"
#include "WaylineDll/Store/RecordRows.h"

using testing::ElementsAre;
using testing::SizeIs;
using Seconds = Profile::Seconds;

namespace {

constexpr wchar_t kValueMissing[] = L"A time value must be specified for a selected option.";
constexpr wchar_t kWarningTooLong[] = L"Warning time must be less than idle time, threshold time and duration time.";

// A sheet with the Timeouts page alone, whose current profile has its own time-outs.
class TimeoutPage : public testing::Test {
 protected:
  TimeoutPage() { Work().SetDefaultTimeouts(false); }

  Profile& Work() { return *context.profiles[kWork]; }

  void SetTimes(int duration, int period, int bytes, int warning) {
    ProfileColumns& columns = Work().Columns();
    columns.durationTime = duration;
    columns.thresholdTimeOut = period;
    columns.thresholdOnOff = period > 0;
    columns.thresholdBytes = bytes;
    columns.warnTime = warning;
  }

  SheetDriver& Open() { return sheet.emplace(context); }

  LoginPropertiesContext context = MakeContext(SheetMode::TimeoutsOnly);
  std::optional<SheetDriver> sheet;
};

}  // namespace

TEST_F(TimeoutPage, ShowsTheProfilesValues) {
  SetTimes(7200, 300, 1000, 120);
  Open();
  EXPECT_TRUE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  EXPECT_TRUE(sheet->IsChecked(IDC_TIMEOUT_DURATION_CHECK));
  EXPECT_TRUE(sheet->IsChecked(IDC_TIMEOUT_THRESHOLD_CHECK));
  EXPECT_TRUE(sheet->IsChecked(IDC_TIMEOUT_WARNING_CHECK));
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_DURATION), L" 2 hours");
  EXPECT_EQ(sheet->SelectedValue(IDC_TIMEOUT_DURATION), 7200u);
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_BYTES), L"  1 KByte");
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_PERIOD), L" 5 minutes");
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_WARNING), L" 2 minutes");
}

TEST_F(TimeoutPage, OffersEveryPresetWithoutLimits) {
  Open();
  EXPECT_THAT(sheet->Items(IDC_TIMEOUT_DURATION),
              ElementsAre(L" 2 minutes", L" 5 minutes", L"10 minutes", L"20 minutes", L"30 minutes", L" 1 hour",
                          L" 2 hours", L" 4 hours", L" 8 hours"));
  EXPECT_THAT(sheet->Items(IDC_TIMEOUT_WARNING),
              ElementsAre(L"30 seconds", L" 1 minute", L" 2 minutes", L" 3 minutes", L" 4 minutes", L" 5 minutes"));
  EXPECT_THAT(sheet->Items(IDC_TIMEOUT_PERIOD), ElementsAre(L" 1 minute", L" 2 minutes", L" 5 minutes", L"10 minutes",
                                                            L"15 minutes", L"20 minutes", L"30 minutes"));
  EXPECT_THAT(sheet->Items(IDC_TIMEOUT_BYTES),
              ElementsAre(L" 50 bytes", L"100 bytes", L"200 bytes", L"500 bytes", L"  1 KByte", L"  2 Kbytes",
                          L"  5 Kbytes", L" 10 Kbytes", L" 20 Kbytes", L" 50 Kbytes", L"100 Kbytes", L"200 Kbytes",
                          L"500 Kbytes", L"  1 MByte", L"  2 MBytes", L"  5 MBytes"));
}

TEST_F(TimeoutPage, SessionLimitCutsTheDurationsAndSelectsTheLast) {
  Work().Columns().smSessionTime = 1800;
  SetTimes(3600, 0, 0, 60);
  Open();
  EXPECT_THAT(sheet->Items(IDC_TIMEOUT_DURATION),
              ElementsAre(L" 2 minutes", L" 5 minutes", L"10 minutes", L"20 minutes", L"30 minutes"));
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_DURATION), L"30 minutes");
}

TEST_F(TimeoutPage, IdleLimitOf120LeavesThirtySecondsAndOneMinute) {
  Work().Columns().smIdleTime = 120;
  Open();
  EXPECT_THAT(sheet->Items(IDC_TIMEOUT_WARNING), ElementsAre(L"30 seconds", L" 1 minute"));
}

TEST_F(TimeoutPage, ThresholdLimitsCutPeriodsAndBytes) {
  Work().Columns().smThresholdTime = 10;
  Work().Columns().smThresholdBytes = 1000;
  Open();
  EXPECT_EQ(sheet->Items(IDC_TIMEOUT_PERIOD).back(), L"10 minutes");
  EXPECT_EQ(sheet->Items(IDC_TIMEOUT_BYTES).front(), L"  1 KByte");
  EXPECT_THAT(sheet->Items(IDC_TIMEOUT_BYTES), SizeIs(12));
}

TEST_F(TimeoutPage, AWarningBetweenPresetsSelectsTheNextLarger) {
  SetTimes(0, 0, 0, 45);
  Open();
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_WARNING), L" 1 minute");
}

TEST_F(TimeoutPage, AWarningOfZeroSelectsTheSecondItem) {
  SetTimes(0, 0, 0, 0);
  Open();
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_WARNING), L" 1 minute");
  // The minute was stored when the page was created, so that the warning is on when the page is shown.
  EXPECT_TRUE(sheet->IsChecked(IDC_TIMEOUT_WARNING_CHECK));
}

TEST_F(TimeoutPage, BytesOfZeroSelectTheSecondItem) {
  Open();
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_BYTES), L"100 bytes");
}

TEST_F(TimeoutPage, ADurationOfZeroIsOffWithEightHoursSelected) {
  SetTimes(0, 0, 0, 60);
  Open();
  EXPECT_FALSE(sheet->IsChecked(IDC_TIMEOUT_DURATION_CHECK));
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_DURATION), L" 8 hours");
  EXPECT_EQ(Work().GetDurationTime(), Seconds(-28800));
}

TEST_F(TimeoutPage, RulesThatAreOffDisableTheirListsAndLabels) {
  SetTimes(-7200, -300, 1000, -120);
  Open();
  for (const int id : {IDC_TIMEOUT_DURATION, IDC_TIMEOUT_DURATION_LABEL, IDC_TIMEOUT_PERIOD, IDC_TIMEOUT_PERIOD_LABEL,
                       IDC_TIMEOUT_BYTES, IDC_TIMEOUT_BYTES_LABEL, IDC_TIMEOUT_WARNING, IDC_TIMEOUT_WARNING_LABEL}) {
    EXPECT_FALSE(sheet->IsEnabled(id)) << id;
  }
  sheet->Click(IDC_TIMEOUT_DURATION_CHECK);
  EXPECT_TRUE(sheet->IsEnabled(IDC_TIMEOUT_DURATION));
  EXPECT_TRUE(sheet->IsEnabled(IDC_TIMEOUT_DURATION_LABEL));
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_DURATION), L" 2 hours") << "the remembered value";
  sheet->Click(IDC_TIMEOUT_THRESHOLD_CHECK);
  for (const int id : {IDC_TIMEOUT_PERIOD, IDC_TIMEOUT_PERIOD_LABEL, IDC_TIMEOUT_BYTES, IDC_TIMEOUT_BYTES_LABEL}) {
    EXPECT_TRUE(sheet->IsEnabled(id)) << id;
  }
  EXPECT_TRUE(Work().GetThresholdOnOff());
  sheet->Click(IDC_TIMEOUT_WARNING_CHECK);
  EXPECT_TRUE(sheet->IsEnabled(IDC_TIMEOUT_WARNING));
  EXPECT_TRUE(sheet->IsEnabled(IDC_TIMEOUT_WARNING_LABEL));
}

TEST_F(TimeoutPage, SwitchingARuleOnSelectsAValueWhereNoneIs) {
  SetTimes(-7200, -300, 2000, -120);
  Open();
  for (const int list : {IDC_TIMEOUT_DURATION, IDC_TIMEOUT_PERIOD, IDC_TIMEOUT_BYTES, IDC_TIMEOUT_WARNING}) {
    sheet->ClearSelection(list);
  }
  sheet->Click(IDC_TIMEOUT_DURATION_CHECK);
  sheet->Click(IDC_TIMEOUT_THRESHOLD_CHECK);
  sheet->Click(IDC_TIMEOUT_WARNING_CHECK);
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_DURATION), L" 8 hours") << "the largest";
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_PERIOD), L" 5 minutes");
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_BYTES), L"  2 Kbytes");
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_WARNING), L" 2 minutes");
}

TEST_F(TimeoutPage, FollowingTheDefaultsShowsTheLinkedProfileDisabled) {
  Work().SetDefaultTimeouts(true);
  SetTimes(7200, 0, 0, 30);
  Work().Columns().smSessionTime = 14400;
  ProfileColumns& root = context.profiles[kRoot]->Columns();
  root.durationTime = 600;
  root.warnTime = 180;
  root.smSessionTime = 300;
  Open();
  EXPECT_FALSE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  EXPECT_TRUE(sheet->IsChecked(IDC_TIMEOUT_DURATION_CHECK));
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_DURATION), L"10 minutes");
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_WARNING), L" 3 minutes");
  EXPECT_EQ(sheet->Items(IDC_TIMEOUT_DURATION).back(), L" 4 hours") << "limits are those of the edited profile";
  EXPECT_FALSE(sheet->IsEnabled(IDC_TIMEOUT_DURATION_CHECK));
  EXPECT_FALSE(sheet->IsEnabled(IDC_TIMEOUT_DURATION));
  EXPECT_EQ(Work().GetState(), ChangeState::Unchanged);
  EXPECT_EQ(context.profiles[kRoot]->GetState(), ChangeState::Unchanged);
}

TEST_F(TimeoutPage, FollowingTheDefaultsChangesNoValueOfTheLinkedProfile) {
  Work().SetDefaultTimeouts(true);
  Profile& root = *context.profiles[kRoot];
  // On its own page each of them would get a default.
  root.Columns().warnTime = 0;
  root.Columns().durationTime = 0;
  root.Columns().thresholdTimeOut = 0;
  root.Columns().thresholdOnOff = true;
  const Profile before = root;
  Open();
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_DURATION), L" 8 hours");
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_WARNING), L" 1 minute");
  sheet->Pick(IDC_PROFILE_COMBO, L"Home");
  sheet->PressOk();
  EXPECT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_EQ(ColumnNames(DifferingColumns(root, before).columns), L"");
  EXPECT_EQ(root.GetState(), ChangeState::Unchanged);
}

TEST_F(TimeoutPage, TheOverrideBoxIsThatOfTheProfileShown) {
  Work().SetDefaultTimeouts(true);
  context.profiles[kRoot]->SetDefaultTimeouts(false);
  Open();
  EXPECT_TRUE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  EXPECT_FALSE(sheet->IsEnabled(IDC_TIMEOUT_DURATION_CHECK));
}

TEST_F(TimeoutPage, AnUnknownParentShowsWhatANewProfileHolds) {
  Work().SetDefaultTimeouts(true);
  Work().Columns().linkProfile = 99;
  Open();
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_DURATION), L" 8 hours");
  EXPECT_FALSE(sheet->IsChecked(IDC_TIMEOUT_DURATION_CHECK));
  EXPECT_FALSE(sheet->IsEnabled(IDC_TIMEOUT_DURATION_CHECK));
}

TEST_F(TimeoutPage, AFailedSearchShowsTheProfileFoundLast) {
  Work().SetDefaultTimeouts(true);
  context.profiles[kRoot]->Columns().durationTime = 600;
  context.profiles[kHome]->Columns().linkProfile = 99;
  Open();
  sheet->Pick(IDC_PROFILE_COMBO, L"Home");
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_DURATION), L"10 minutes");
  sheet->PressOk();
  EXPECT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_EQ(context.linkedDefaultProfile, context.profiles[kRoot]);
}

TEST_F(TimeoutPage, OverridingShowsTheProfilesOwnValues) {
  Work().SetDefaultTimeouts(true);
  SetTimes(7200, 0, 0, 30);
  context.profiles[kRoot]->Columns().durationTime = 600;
  Open();
  sheet->Click(IDC_OVERRIDE_CHECK);
  EXPECT_FALSE(Work().GetDefaultTimeouts());
  EXPECT_EQ(Work().GetState(), ChangeState::Changed);
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_DURATION), L" 2 hours");
  EXPECT_TRUE(sheet->IsEnabled(IDC_TIMEOUT_DURATION));
}

TEST_F(TimeoutPage, OkStoresWhatWasChosen) {
  SetTimes(-28800, -28800, 0, -60);
  Open();
  sheet->Click(IDC_TIMEOUT_DURATION_CHECK);
  sheet->Pick(IDC_TIMEOUT_DURATION, L" 2 hours");
  sheet->Click(IDC_TIMEOUT_THRESHOLD_CHECK);
  sheet->Pick(IDC_TIMEOUT_BYTES, L"  5 Kbytes");
  sheet->Pick(IDC_TIMEOUT_PERIOD, L"10 minutes");
  sheet->Click(IDC_TIMEOUT_WARNING_CHECK);
  sheet->Pick(IDC_TIMEOUT_WARNING, L" 3 minutes");
  sheet->PressOk();
  EXPECT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_EQ(Work().GetDurationTime(), Seconds(7200));
  EXPECT_TRUE(Work().GetThresholdOnOff());
  EXPECT_EQ(Work().GetThresholdBytes(), 5000);
  EXPECT_EQ(Work().GetThresholdTimeOut(), Seconds(600));
  EXPECT_EQ(Work().GetWarnTime(), Seconds(180));
  EXPECT_EQ(Work().GetState(), ChangeState::Changed);
}

TEST_F(TimeoutPage, SwitchedOffDurationAndThresholdAreStoredAsZero) {
  SetTimes(7200, 300, 1000, 120);
  Open();
  sheet->Click(IDC_TIMEOUT_DURATION_CHECK);
  sheet->Click(IDC_TIMEOUT_THRESHOLD_CHECK);
  sheet->PressOk();
  EXPECT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_EQ(Work().GetDurationTime(), Seconds(0));
  EXPECT_EQ(Work().GetThresholdTimeOut(), Seconds(0));
  EXPECT_EQ(Work().GetThresholdBytes(), 0);
  EXPECT_FALSE(Work().GetThresholdOnOff());
}

TEST_F(TimeoutPage, FollowingTheDefaultsStoresNothing) {
  Work().SetDefaultTimeouts(true);
  SetTimes(7200, 300, 1000, -45);
  Open();
  sheet->PressOk();
  EXPECT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_EQ(Work().GetDurationTime(), Seconds(7200));
  EXPECT_EQ(Work().GetWarnTime(), Seconds(-45));
  EXPECT_EQ(Work().GetState(), ChangeState::Unchanged);
}

TEST_F(TimeoutPage, TheSignOfAWarningThatIsOffFlipsAtEachValidation) {
  SetTimes(-28800, 0, 0, -60);
  Open();
  // A duration without a value makes each validation fail, so that the page stays as it is.
  sheet->Click(IDC_TIMEOUT_DURATION_CHECK);
  sheet->ClearSelection(IDC_TIMEOUT_DURATION);
  for (const Seconds expected : {Seconds(60), Seconds(-60)}) {
    EXPECT_FALSE(sheet->IsChecked(IDC_TIMEOUT_WARNING_CHECK));
    sheet->PressOk();
    EXPECT_EQ(sheet->MessageBoxText(), kValueMissing);
    sheet->AnswerMessageBox(IDOK);
    EXPECT_EQ(Work().GetWarnTime(), expected);
  }
}

TEST_F(TimeoutPage, AWarningThatWasOffIsOnAfterTheNextValidation) {
  context = MakeContext();
  Work().SetDefaultTimeouts(false);
  SetTimes(-28800, 0, 0, -60);
  Open();
  sheet->SelectTab(L"Timeouts");
  EXPECT_FALSE(sheet->IsChecked(IDC_TIMEOUT_WARNING_CHECK));
  sheet->SelectTab(L"General");
  sheet->SelectTab(L"Timeouts");
  EXPECT_TRUE(sheet->IsChecked(IDC_TIMEOUT_WARNING_CHECK));
}

TEST_F(TimeoutPage, AWarningLongerThanTheDurationKeepsTheSheetOpen) {
  SetTimes(-28800, -28800, 0, -60);
  Open();
  sheet->Click(IDC_TIMEOUT_DURATION_CHECK);
  sheet->Pick(IDC_TIMEOUT_DURATION, L" 2 minutes");
  sheet->Click(IDC_TIMEOUT_WARNING_CHECK);
  for (const wchar_t* warning : {L" 3 minutes", L" 2 minutes"}) {
    sheet->Pick(IDC_TIMEOUT_WARNING, warning);
    sheet->PressOk();
    EXPECT_EQ(sheet->MessageBoxText(), kWarningTooLong);
    sheet->AnswerMessageBox(IDOK);
    EXPECT_TRUE(sheet->IsOpen());
    EXPECT_TRUE(sheet->HasFocus(IDC_TIMEOUT_WARNING));
  }
  sheet->Pick(IDC_TIMEOUT_WARNING, L" 1 minute");
  sheet->PressOk();
  EXPECT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_EQ(Work().GetDurationTime(), Seconds(120));
  EXPECT_EQ(Work().GetWarnTime(), Seconds(60));
}

TEST_F(TimeoutPage, AMissingValueIsToldAndItsListGetsTheFocus) {
  struct Case {
    int check;
    int emptyList;
  };
  for (const auto& [check, emptyList] :
       {Case{IDC_TIMEOUT_DURATION_CHECK, IDC_TIMEOUT_DURATION}, Case{IDC_TIMEOUT_THRESHOLD_CHECK, IDC_TIMEOUT_BYTES},
        Case{IDC_TIMEOUT_THRESHOLD_CHECK, IDC_TIMEOUT_PERIOD}, Case{IDC_TIMEOUT_WARNING_CHECK, IDC_TIMEOUT_WARNING}}) {
    SetTimes(-28800, -300, 1000, -60);
    Open();
    sheet->Click(check);
    sheet->ClearSelection(emptyList);
    sheet->PressOk();
    EXPECT_EQ(sheet->MessageBoxText(), kValueMissing) << emptyList;
    sheet->AnswerMessageBox(IDOK);
    EXPECT_TRUE(sheet->IsOpen());
    EXPECT_TRUE(sheet->HasFocus(emptyList)) << emptyList;
    sheet.reset();
  }
}

TEST_F(TimeoutPage, AProblemKeepsThePageInFront) {
  context = MakeContext();
  Work().SetDefaultTimeouts(false);
  SetTimes(120, 0, 0, 180);
  Open();
  sheet->SelectTab(L"Timeouts");
  sheet->SelectTab(L"General");
  EXPECT_EQ(sheet->MessageBoxText(), kWarningTooLong);
  sheet->AnswerMessageBox(IDOK);
  EXPECT_EQ(sheet->CurrentTab(), L"Timeouts");
}

TEST_F(TimeoutPage, AProblemKeepsTheProfile) {
  SetTimes(120, 0, 0, 180);
  Open();
  sheet->Pick(IDC_PROFILE_COMBO, L"Home");
  EXPECT_EQ(sheet->MessageBoxText(), kWarningTooLong);
  sheet->AnswerMessageBox(IDOK);
  EXPECT_EQ(sheet->Selected(IDC_PROFILE_COMBO), L"Work");
  EXPECT_TRUE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
}

TEST_F(TimeoutPage, ChoosingAnotherProfileStoresTheFirstAndShowsTheOther) {
  context.profiles[kHome]->SetDefaultTimeouts(false);
  context.profiles[kHome]->SetDurationTime(Seconds(600));
  SetTimes(-28800, 0, 0, 60);
  Open();
  sheet->Click(IDC_TIMEOUT_DURATION_CHECK);
  sheet->Pick(IDC_TIMEOUT_DURATION, L" 1 hour");
  sheet->Pick(IDC_PROFILE_COMBO, L"Home");
  EXPECT_EQ(Work().GetDurationTime(), Seconds(3600));
  EXPECT_EQ(sheet->Selected(IDC_PROFILE_COMBO), L"Home");
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_DURATION), L"10 minutes");
}

TEST_F(TimeoutPage, ChoosingAValueMarksTheProfileChanged) {
  for (const int list : {IDC_TIMEOUT_WARNING, IDC_TIMEOUT_DURATION, IDC_TIMEOUT_BYTES, IDC_TIMEOUT_PERIOD}) {
    context = MakeContext(SheetMode::TimeoutsOnly);
    context.profiles[kRoot]->SetDurationTime(Seconds(600));
    Open();
    // The page follows the defaults, so that nothing else has marked the profile.
    EnableWindow(sheet->Control(list), TRUE);
    ASSERT_EQ(Work().GetState(), ChangeState::Unchanged);
    sheet->Pick(list, sheet->Items(list).front());
    EXPECT_EQ(Work().GetState(), ChangeState::Changed) << list;
    sheet.reset();
  }
}

TEST_F(TimeoutPage, LogsTheInactivityLimitOfTheConnection) {
  const ServiceLog log;
  Open();
  EXPECT_TRUE(log.Has("(Your maximum inactivity time will be determined at your next connection.)"));
  sheet.reset();

  const TemporaryFolder folder;
  ASSERT_EQ(OpenSettings(folder.File(L"Wayline.db")), std::nullopt);
  Work().Columns().smIdleTime = 5400;
  Open();
  EXPECT_TRUE(log.Has("(Your maximum inactivity time is  1 hour30 minutes.)"));
  sheet.reset();
  CloseSettings();
}

TEST_F(TimeoutPage, CanBeUsedWithTheKeyboardAlone) {
  Work().SetDefaultTimeouts(true);
  SetTimes(-28800, -28800, 0, -60);
  Open();
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return sheet->IsChecked(IDC_OVERRIDE_CHECK); }, 'O', {VK_MENU}));
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return sheet->IsChecked(IDC_TIMEOUT_DURATION_CHECK); }, 'E', {VK_MENU}));
  sheet->Focus(IDC_TIMEOUT_DURATION);
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return sheet->Selected(IDC_TIMEOUT_DURATION) == L" 2 minutes"; }, VK_HOME));
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return sheet->Selected(IDC_TIMEOUT_DURATION) == L" 5 minutes"; }, VK_DOWN));
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return sheet->IsChecked(IDC_TIMEOUT_THRESHOLD_CHECK); }, 'N', {VK_MENU}));
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return sheet->IsChecked(IDC_TIMEOUT_WARNING_CHECK); }, 'D', {VK_MENU}));
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return !sheet->IsOpen(); }, VK_RETURN));
  EXPECT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_EQ(Work().GetDurationTime(), Seconds(300));
}

TEST_F(TimeoutPage, TabVisitsTheControlsInReadingOrder) {
  SetTimes(7200, 300, 1000, 120);
  Open();
  HWND control = sheet->Control(IDC_PROFILE_COMBO);
  for (const int next :
       {IDC_OVERRIDE_CHECK, IDC_TIMEOUT_DURATION_CHECK, IDC_TIMEOUT_DURATION, IDC_TIMEOUT_THRESHOLD_CHECK,
        IDC_TIMEOUT_BYTES, IDC_TIMEOUT_PERIOD, IDC_TIMEOUT_WARNING_CHECK, IDC_TIMEOUT_WARNING}) {
    control = GetNextDlgTabItem(sheet->Page(), control, FALSE);
    EXPECT_EQ(GetDlgCtrlID(control), next);
  }
  sheet->Focus(IDC_PROFILE_COMBO);
  EXPECT_TRUE(sheet->PressKeyUntil([this] { return !sheet->HasFocus(IDC_PROFILE_COMBO); }, VK_TAB));
}
