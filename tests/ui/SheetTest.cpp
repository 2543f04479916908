// Which pages the sheet has, and what happens to the caller's context.

#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>
#include <prsht.h>

#include <atomic>
#include <thread>

#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Timeouts/TimeoutControls.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestingIni.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/SheetDriver.h"
#include "tests/ui/TestContext.h"

using testing::ElementsAre;

TEST(Sheet, HasSixPagesInTheFullMode) {
  LoginPropertiesContext context = MakeContext();
  const SheetDriver sheet(context);
  EXPECT_THAT(sheet.Tabs(),
              ElementsAre(L"General", L"Preferences", L"Autostart", L"Proxy", L"Timeouts", L"Wi-Fi Switching"));
  EXPECT_EQ(sheet.CurrentTab(), L"General");
}

TEST(Sheet, ShowsOnePageInTheOtherModesUnderTheSameTitle) {
  for (const auto& [mode, title] :
       {std::pair{SheetMode::TimeoutsOnly, L"Timeouts"}, std::pair{SheetMode::WiFiSwitchingOnly, L"Wi-Fi Switching"}}) {
    LoginPropertiesContext context = MakeContext(mode);
    const SheetDriver sheet(context);
    EXPECT_THAT(sheet.Tabs(), ElementsAre(title));
    EXPECT_EQ(sheet.Title(), L"Wayline - Login Properties");
  }
}

TEST(Sheet, HasTheProductsNameInItsTitle) {
  LoginPropertiesContext context = MakeContext();
  const SheetDriver sheet(context);
  EXPECT_EQ(sheet.Title(), L"Wayline - Login Properties");
}

TEST(Sheet, HasOkCancelAndHelpButNoApplyButton) {
  LoginPropertiesContext context = MakeContext();
  const SheetDriver sheet(context);
  constexpr int kApplyButton = 0x3021;
  EXPECT_TRUE(IsWindowVisible(GetDlgItem(sheet.Sheet(), IDOK)));
  EXPECT_TRUE(IsWindowVisible(GetDlgItem(sheet.Sheet(), IDCANCEL)));
  EXPECT_TRUE(IsWindowVisible(GetDlgItem(sheet.Sheet(), IDHELP)));
  const HWND apply = GetDlgItem(sheet.Sheet(), kApplyButton);
  EXPECT_TRUE(apply == nullptr || !IsWindowVisible(apply));
}

TEST(Sheet, BelongsToTheCallersWindowAndLocksIt) {
  LoginPropertiesContext context = MakeContext();
  const SheetDriver sheet(context);
  EXPECT_EQ(GetWindow(sheet.Sheet(), GW_OWNER), sheet.Owner());
  EXPECT_FALSE(IsWindowEnabled(sheet.Owner()));
}

TEST(Sheet, HandsTheContextBackAfterOk) {
  LoginPropertiesContext context = MakeContext();
  SheetDriver sheet(context);
  sheet.SelectTab(L"Preferences");
  sheet.Click(IDC_OVERRIDE_CHECK);
  sheet.Pick(IDC_PROFILE_COMBO, L"Work 2");
  sheet.SelectTab(L"Timeouts");
  sheet.Pick(IDC_PROFILE_COMBO, L"Home");
  sheet.Click(IDC_OVERRIDE_CHECK);
  sheet.PressOk();
  EXPECT_EQ(sheet.Result(), kSheetConfirmed);
  EXPECT_EQ(context.currentProfile, context.profiles[kHome]);
  EXPECT_EQ(context.linkedDefaultProfile, context.profiles[kRoot]);
  EXPECT_FALSE(context.profiles[kWork]->GetDefaultPreferences());
  EXPECT_EQ(context.profiles[kWork]->GetState(), ChangeState::Changed);
  EXPECT_EQ(context.profiles[kWork2]->GetState(), ChangeState::Unchanged);
  EXPECT_FALSE(context.profiles[kHome]->GetDefaultTimeouts());
  EXPECT_EQ(context.profiles[kHome]->GetState(), ChangeState::Changed);
}

TEST(Sheet, LeavesTheContextAloneAfterCancel) {
  LoginPropertiesContext context = MakeContext();
  const LoginPropertiesContext before = context;
  SheetDriver sheet(context);
  for (const wchar_t* tab : {L"Preferences", L"Proxy", L"Timeouts"}) {
    sheet.SelectTab(tab);
    sheet.Click(IDC_OVERRIDE_CHECK);
    sheet.Pick(IDC_PROFILE_COMBO, L"Home");
  }
  sheet.PressCancel();
  EXPECT_NE(sheet.Result(), kSheetConfirmed);
  EXPECT_EQ(context.currentProfile, before.currentProfile);
  EXPECT_EQ(context.linkedDefaultProfile, nullptr);
  EXPECT_EQ(context.profiles, before.profiles);
  EXPECT_EQ(context.manualConfigs, before.manualConfigs);
  EXPECT_EQ(context.autoConfigs, before.autoConfigs);
}

namespace {

bool ShowsSheetWithoutPages(DWORD threadId) {
  bool shows = false;
  EnumThreadWindows(
      threadId,
      [](HWND window, LPARAM found) -> BOOL {
        const HWND tabs = PropSheet_GetTabControl(window);
        if (tabs == nullptr) return TRUE;
        *reinterpret_cast<bool*>(found) = TabCtrl_GetItemCount(tabs) == 0;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&shows));
  return shows;
}

}  // namespace

// On Windows the platform refuses a sheet without pages; Wine shows an empty one, which only the end of the program's
// message loop takes away. Both are results other than 1.
TEST(Sheet, HasNoPagesInAModeThatDoesNotExist) {
  for (const unsigned mode : {0u, 4u}) {
    LoginPropertiesContext context = MakeContext(static_cast<SheetMode>(mode));
    const LoginPropertiesContext before = context;
    std::atomic<bool> ended = false;
    INT_PTR result = kSheetConfirmed;
    DWORD threadId = 0;
    std::atomic<bool> started = false;
    std::thread thread([&] {
      threadId = GetCurrentThreadId();
      started = true;
      result = ShowSheetOfModule(&context);
      ended = true;
    });
    ASSERT_TRUE(WaitUntil([&] { return started.load(); }));
    EXPECT_TRUE(WaitUntil([&] { return ended || ShowsSheetWithoutPages(threadId); })) << "the platform is asked";
    EXPECT_TRUE(WaitUntil([&] {
      PostThreadMessageW(threadId, WM_QUIT, 0, 0);
      return ended.load();
    }));
    thread.join();
    EXPECT_NE(result, 1);
    EXPECT_EQ(context.currentProfile, before.currentProfile);
    EXPECT_EQ(context.profiles, before.profiles);
  }
}

TEST(Sheet, TakesNullRecordsForNothing) {
  LoginPropertiesContext context = MakeContext();
  const std::vector<std::wstring> tabs = {L"General",  L"Preferences",     L"Autostart",  L"Proxy",
                                          L"Timeouts", L"Wi-Fi Switching", L"Preferences"};
  for (const uint32_t id : {kRoot, 7u, kHidden, 2999u}) context.profiles[id] = nullptr;
  context.preferences[PreferenceId::AutoConnect] = nullptr;
  context.autoStartItems[1] = nullptr;
  for (ConfigTable* configs : {&context.manualConfigs, &context.autoConfigs}) (*configs)[kWork] = nullptr;
  context.currentProfile = nullptr;
  SheetDriver sheet(context);
  for (const std::wstring& tab : tabs) sheet.SelectTab(tab);
  for (const wchar_t* profile : {L"Work", L"Home"}) {
    for (const std::wstring& tab : tabs) {
      sheet.SelectTab(tab);
      EXPECT_EQ(sheet.CurrentTab(), tab);
      EXPECT_THAT(sheet.Items(IDC_PROFILE_COMBO), ElementsAre(L"Home", L"Work", L"Work 2"));
      sheet.Pick(IDC_PROFILE_COMBO, profile);
      EXPECT_EQ(sheet.Selected(IDC_PROFILE_COMBO), profile);
    }
  }
  sheet.PressOk();
  EXPECT_EQ(sheet.Result(), kSheetConfirmed);
  EXPECT_EQ(context.currentProfile, context.profiles[kHome]);
  EXPECT_EQ(context.profiles.size(), 8u) << "they are handed back as they came";
}

TEST(Sheet, StartsAfreshAtEachCall) {
  LoginPropertiesContext first = MakeContext();
  {
    SheetDriver sheet(first);
    sheet.SelectTab(L"Timeouts");
    sheet.Pick(IDC_PROFILE_COMBO, L"Home");
    sheet.PressOk();
    EXPECT_EQ(sheet.Result(), kSheetConfirmed);
  }
  LoginPropertiesContext second = MakeContext();
  const SheetDriver sheet(second);
  EXPECT_EQ(sheet.CurrentTab(), L"General");
  EXPECT_EQ(sheet.Selected(IDC_PROFILE_COMBO), L"Work");
}

TEST(Sheet, HasNeitherAutostartNorProxyOnTheLogOnDesktop) {
  const TestingIni ini("[GINA]\nRunnningInWinLogonDesktop=1\n");
  // Whether it is the log-on desktop is found out once per process.
  InOwnProcess([] {
    LoginPropertiesContext context = MakeContext();
    const SheetDriver sheet(context);
    EXPECT_THAT(sheet.Tabs(), ElementsAre(L"General", L"Preferences", L"Timeouts", L"Wi-Fi Switching"));
  });
}
