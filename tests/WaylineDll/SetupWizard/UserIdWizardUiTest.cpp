// The wizard for user ID and network service, and what holds for every wizard.

#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>

#include <functional>

#include "tests/support/BrowserStandIn.h"
#include "tests/support/ResourceCounters.h"
#include "tests/support/WaitUntil.h"
#include "tests/WaylineDll/SetupWizard/WizardTest.h"
#include "WaylineDll/Host.h"

namespace {

using testing::ElementsAre;

constexpr wchar_t kAccountExpected[] =
    L"The account can have at most 256 characters, and no tabs or other control characters.";
constexpr wchar_t kUserIdExpected[] =
    L"The user ID can have at most 256 characters, and no blanks, tabs or other control characters.";

class UserIdWizard : public WizardTest {
 protected:
  void Open() { WizardTest::Open(WizardId::UserIdAndService); }

  void ExpectUntouched() {
    EXPECT_EQ(wizard->Result(), 0);
    EXPECT_EQ(data.profile->GetUserId(), L"a.sample");
    EXPECT_EQ(data.profile->GetAccount(), L"Example Company");
    EXPECT_EQ(data.profile->GetState(), ChangeState::Unchanged);
  }
};

bool IsFocusOn(const WizardDriver& wizard, int id) { return wizard.FocusedControl() == id; }

}  // namespace

TEST_F(UserIdWizard, ShowsTheProfileAndStoresWhatIsEntered) {
  Open();
  EXPECT_EQ(wizard->Title(), L"User ID and Network Service");
  EXPECT_EQ(wizard->CurrentPage(), WizardPage::UserId);
  EXPECT_EQ(wizard->Text(IDC_WIZARD_ACCOUNT), L"Example Company");
  EXPECT_EQ(wizard->Text(IDC_WIZARD_USER_ID), L"a.sample");
  EXPECT_FALSE(wizard->CanPress(WizardDriver::kBack));
  wizard->Type(IDC_WIZARD_ACCOUNT, L"Example");
  wizard->Type(IDC_WIZARD_USER_ID, L"b.sample");
  wizard->PressNext();
  ASSERT_EQ(wizard->CurrentPage(), WizardPage::Service);
  EXPECT_THAT(wizard->Items(IDC_WIZARD_SERVICE), ElementsAre(L"Standard Access", L"Secure Tunnel", L"Guest Internet"));
  EXPECT_EQ(wizard->Selected(IDC_WIZARD_SERVICE), L"Standard Access");
  wizard->Pick(IDC_WIZARD_SERVICE, L"Guest Internet");
  wizard->PressFinish();
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_EQ(data.profile->GetAccount(), L"Example");
  EXPECT_EQ(data.profile->GetUserId(), L"b.sample");
  EXPECT_EQ(data.profile->GetLinkService(), 402);
}

TEST_F(UserIdWizard, ChangesNothingWhenNothingIsChanged) {
  data.profile->SetLinkService(0);
  const ProfileColumns before = Columns();
  Open();
  GoTo(WizardPage::Service);
  EXPECT_EQ(wizard->Selected(IDC_WIZARD_SERVICE), L"Standard Access");
  wizard->PressFinish();
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_EQ(Columns().account, before.account);
  EXPECT_EQ(Columns().userId, before.userId);
  EXPECT_EQ(Columns().linkService, 0);
}

TEST_F(UserIdWizard, LeavesTheProfileAloneWhenItIsCancelled) {
  Open();
  wizard->Type(IDC_WIZARD_USER_ID, L"b.sample");
  wizard->PressNext();
  wizard->PressCancel();
  ExpectUntouched();
}

TEST_F(UserIdWizard, KeepsWhatIsEnteredOnTheWayBackAndForth) {
  Open();
  wizard->Type(IDC_WIZARD_USER_ID, L"b.sample");
  wizard->PressNext();
  wizard->Pick(IDC_WIZARD_SERVICE, L"Secure Tunnel");
  wizard->PressBack();
  ASSERT_EQ(wizard->CurrentPage(), WizardPage::UserId);
  EXPECT_EQ(wizard->Text(IDC_WIZARD_USER_ID), L"b.sample");
  wizard->PressNext();
  EXPECT_EQ(wizard->Selected(IDC_WIZARD_SERVICE), L"Secure Tunnel");
}

TEST_F(UserIdWizard, AcceptsEmptyFields) {
  Open();
  wizard->Type(IDC_WIZARD_ACCOUNT, L"");
  wizard->Type(IDC_WIZARD_USER_ID, L"");
  GoTo(WizardPage::Service);
  wizard->PressFinish();
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_EQ(data.profile->GetAccount(), L"");
  EXPECT_EQ(data.profile->GetUserId(), L"");
}

TEST_F(UserIdWizard, RefusesAWrongFieldWhenItIsLeft) {
  Open();
  wizard->Type(IDC_WIZARD_USER_ID, L"b sample");
  wizard->TryFocus(IDC_WIZARD_ACCOUNT);
  ExpectRefusal(IDC_WIZARD_USER_ID, kUserIdExpected);
  wizard->TryFocusButton(WizardDriver::kNext);
  ExpectRefusal(IDC_WIZARD_USER_ID, kUserIdExpected);
  wizard->Type(IDC_WIZARD_USER_ID, L"b.sample");
  wizard->Type(IDC_WIZARD_ACCOUNT, std::wstring(257, L'a'));
  wizard->TryFocus(IDC_WIZARD_USER_ID);
  ExpectRefusal(IDC_WIZARD_ACCOUNT, kAccountExpected);
}

TEST_F(UserIdWizard, RefusesAWrongFieldOnceWhenNextIsPressed) {
  Open();
  wizard->Type(IDC_WIZARD_USER_ID, L"b sample");
  wizard->PressNext();
  ExpectRefusal(IDC_WIZARD_USER_ID, kUserIdExpected);
  EXPECT_EQ(wizard->CurrentPage(), WizardPage::UserId);
  // With the key of the button, which also moves the focus.
  EXPECT_TRUE(wizard->PressKeyUntil([&] { return wizard->MessageBoxText().has_value(); }, L'N', {VK_MENU}));
  ExpectRefusal(IDC_WIZARD_USER_ID, kUserIdExpected);
  EXPECT_EQ(wizard->CurrentPage(), WizardPage::UserId);
}

TEST_F(UserIdWizard, RefusesAWrongFieldOnceWhenNextIsClicked) {
  Open();
  wizard->Type(IDC_WIZARD_USER_ID, L"b sample");
  for (int time = 0; time < 2; ++time) {
    EXPECT_TRUE(wizard->ClickButtonUntil([&] { return wizard->MessageBoxText().has_value(); }, WizardDriver::kNext));
    ExpectRefusal(IDC_WIZARD_USER_ID, kUserIdExpected);
  }
  wizard->Type(IDC_WIZARD_USER_ID, L"b.sample");
  const auto goesOn = [&] { return wizard->CurrentPage() == WizardPage::Service; };
  EXPECT_TRUE(wizard->ClickButtonUntil(goesOn, WizardDriver::kNext));
}

TEST_F(UserIdWizard, RefusesTheFirstOfTwoWrongFieldsOnly) {
  Open();
  wizard->Paste(IDC_WIZARD_ACCOUNT, L"Example\tCompany");
  SetWindowTextW(wizard->Control(IDC_WIZARD_USER_ID), L"b sample");
  wizard->PressNext();
  ExpectRefusal(IDC_WIZARD_ACCOUNT, kAccountExpected);
}

TEST_F(UserIdWizard, SpeaksOfOneFieldWhenTheNextOneIsWrongToo) {
  Open();
  SetWindowTextW(wizard->Control(IDC_WIZARD_USER_ID), L"b sample");
  wizard->Paste(IDC_WIZARD_ACCOUNT, L"Example\tCompany");
  wizard->TryFocus(IDC_WIZARD_USER_ID);
  ExpectRefusal(IDC_WIZARD_ACCOUNT, kAccountExpected);
}

TEST_F(UserIdWizard, CancelsWithAWrongFieldWithoutAWord) {
  const std::function<void()> waysToCancel[] = {
      [this] { wizard->PressCancel(); },
      [this] {
        wizard->TryFocusButton(IDCANCEL);
        EXPECT_EQ(wizard->MessageBoxText(), std::nullopt);
        EXPECT_TRUE(wizard->PressKeyUntil([this] { return !wizard->IsOpen(); }, VK_SPACE));
      },
      [this] { EXPECT_TRUE(wizard->PressKeyUntil([this] { return !wizard->IsOpen(); }, VK_ESCAPE)); },
      [this] { EXPECT_TRUE(wizard->ClickButtonUntil([this] { return !wizard->IsOpen(); }, IDCANCEL)); },
      [this] { wizard->CloseWindow(); },
  };
  for (const auto& cancel : waysToCancel) {
    Open();
    wizard->Type(IDC_WIZARD_USER_ID, L"b sample");
    cancel();
    EXPECT_EQ(wizard->MessageBoxText(), std::nullopt);
    ExpectUntouched();
  }
}

TEST_F(UserIdWizard, SaysNothingWhenTheUserGoesToAnotherProgram) {
  Open();
  wizard->Type(IDC_WIZARD_USER_ID, L"b sample");
  const HWND other = CreateWindowExW(0, L"EDIT", L"Other", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 400, 200, 100, nullptr,
                                     nullptr, nullptr, nullptr);
  EXPECT_TRUE(WaitUntil([&] {
    SetForegroundWindow(other);
    return wizard->FocusedControl() == 0;
  }));
  wizard->TryFocus(IDC_WIZARD_USER_ID);
  EXPECT_EQ(wizard->MessageBoxText(), std::nullopt);
  DestroyWindow(other);
}

TEST_F(UserIdWizard, TakesAPastedTextWithoutTheLineEndsAroundIt) {
  Open();
  wizard->Paste(IDC_WIZARD_USER_ID, L"\r\n\r\n  b.sample \r\n");
  EXPECT_EQ(wizard->Text(IDC_WIZARD_USER_ID), L"b.sample");
}

TEST_F(UserIdWizard, TrimsWhatIsTyped) {
  Open();
  wizard->Type(IDC_WIZARD_USER_ID, L"  b.sample ");
  wizard->TryFocus(IDC_WIZARD_ACCOUNT);
  EXPECT_EQ(wizard->MessageBoxText(), std::nullopt);
  EXPECT_EQ(wizard->Text(IDC_WIZARD_USER_ID), L"b.sample");
}

TEST_F(UserIdWizard, KeepsAServiceThatItDoesNotKnow) {
  data.profile->SetLinkService(999);
  Open();
  GoTo(WizardPage::Service);
  EXPECT_EQ(wizard->Selected(IDC_WIZARD_SERVICE), std::nullopt);
  wizard->PressFinish();
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_EQ(data.profile->GetLinkService(), 999);
}

TEST_F(UserIdWizard, AsksForAServiceWhenTheUserHasTouchedTheListAndChosenNone) {
  data.profile->SetLinkService(999);
  Open();
  GoTo(WizardPage::Service);
  SendMessageW(wizard->Page(), WM_COMMAND, MAKEWPARAM(IDC_WIZARD_SERVICE, LBN_SELCANCEL),
               reinterpret_cast<LPARAM>(wizard->Control(IDC_WIZARD_SERVICE)));
  wizard->PressFinish();
  EXPECT_EQ(wizard->MessageBoxText(), L"Please choose a network service.");
  wizard->AnswerMessageBox();
  EXPECT_TRUE(wizard->IsOpen());
  EXPECT_EQ(wizard->FocusedControl(), IDC_WIZARD_SERVICE);
}

TEST_F(UserIdWizard, SaysThatServicesCannotBeReadAndKeepsTheOneThatThereIs) {
  CloseSettings();
  Open();
  GoTo(WizardPage::Service);
  EXPECT_THAT(wizard->Items(IDC_WIZARD_SERVICE), testing::IsEmpty());
  EXPECT_EQ(wizard->Text(IDC_WIZARD_SERVICE_HINT),
            L"The network services cannot be read. The login profile keeps the one that it has.");
  wizard->PressFinish();
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_EQ(data.profile->GetLinkService(), 400);
}

TEST_F(UserIdWizard, WhatIsStoredIsKeptAsItIsUntilTheUserChangesIt) {
  data.profile->SetUserId(L"EXAMPLE user");
  data.profile->SetAccount(L" Trail ");
  Open();
  wizard->PressNext();
  ASSERT_EQ(wizard->CurrentPage(), WizardPage::Service) << "nobody has entered it now";
  wizard->PressBack();
  wizard->Type(IDC_WIZARD_USER_ID, L"other user");
  wizard->PressNext();
  ExpectRefusal(IDC_WIZARD_USER_ID, kUserIdExpected);
  wizard->Type(IDC_WIZARD_USER_ID, L"EXAMPLE user");
  wizard->PressNext();
  wizard->PressFinish();
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_EQ(data.profile->GetUserId(), L"EXAMPLE user");
  EXPECT_EQ(data.profile->GetAccount(), L" Trail ");
}

TEST_F(UserIdWizard, CanBeDoneWithTheKeyboardAlone) {
  Open();
  ASSERT_TRUE(IsFocusOn(*wizard, IDC_WIZARD_ACCOUNT));
  EXPECT_EQ(wizard->SelectedText(IDC_WIZARD_ACCOUNT), L"Example Company");
  EXPECT_TRUE(wizard->PressKeyUntil([&] { return IsFocusOn(*wizard, IDC_WIZARD_USER_ID); }, VK_TAB));
  EXPECT_TRUE(wizard->PressKeyUntil([&] { return wizard->Text(IDC_WIZARD_USER_ID) == L"x"; }, L'X'));
  EXPECT_TRUE(wizard->PressKeyUntil([&] { return wizard->CurrentPage() == WizardPage::Service; }, VK_RETURN));
  EXPECT_TRUE(WaitUntil([&] { return IsFocusOn(*wizard, IDC_WIZARD_SERVICE); }));
  EXPECT_TRUE(wizard->PressKeyUntil([&] { return wizard->Selected(IDC_WIZARD_SERVICE) == L"Guest Internet"; }, VK_END));
  EXPECT_TRUE(wizard->PressKeyUntil([&] { return wizard->CurrentPage() == WizardPage::UserId; }, L'B', {VK_MENU}));
  EXPECT_TRUE(WaitUntil([&] { return IsFocusOn(*wizard, IDC_WIZARD_ACCOUNT); }));
  EXPECT_TRUE(wizard->PressKeyUntil([&] { return IsFocusOn(*wizard, IDC_WIZARD_USER_ID); }, L'U', {VK_MENU}));
  EXPECT_TRUE(wizard->PressKeyUntil([&] { return wizard->CurrentPage() == WizardPage::Service; }, L'N', {VK_MENU}));
  EXPECT_TRUE(wizard->PressKeyUntil([&] { return !wizard->IsOpen(); }, VK_RETURN));
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_EQ(data.profile->GetUserId(), L"x");
  EXPECT_EQ(data.profile->GetLinkService(), 402);
}

TEST_F(UserIdWizard, StandsBeforeTheDisabledWindowThatItBelongsTo) {
  Open();
  const HWND owner = wizard->Owner();
  EXPECT_FALSE(IsWindowEnabled(owner));
  EXPECT_EQ(GetWindow(wizard->Window(), GW_OWNER), owner);
}

TEST_F(UserIdWizard, LooksLikeTheSheetWhateverTheProgram) {
  Open();
  // Buttons of older common controls do not know their size.
  SIZE size{};
  EXPECT_TRUE(Button_GetIdealSize(GetDlgItem(wizard->Window(), WizardDriver::kNext), &size));
}

TEST_F(UserIdWizard, OpensItsHelpWithF1WhateverHasTheFocus) {
  Open();
  for (const int button : {0, WizardDriver::kNext}) {
    if (button != 0) wizard->TryFocusButton(button);
    const BrowserStandIn browser;
    EXPECT_TRUE(wizard->PressKeyUntil([&browser] { return browser.HasOpened(); }, VK_F1));
  }
}

TEST_F(UserIdWizard, LeavesNothingBehind) {
  const auto openAndCancel = [this] {
    Open();
    GoTo(WizardPage::Service);
    wizard->PressCancel();
    EXPECT_EQ(wizard->Result(), 0);
    wizard.reset();
  };
  // The first times fill the platform's caches.
  for (int time = 0; time < 10; ++time) openAndCancel();
  const size_t handles = CountKernelHandles();
  const size_t windows = CountWindows();
  const size_t objects = CountGdiObjects();
  for (int time = 0; time < 50; ++time) openAndCancel();
  constexpr size_t kPlatformsOwn = 10;
  EXPECT_TRUE(WaitUntil([=] { return CountKernelHandles() <= handles + kPlatformsOwn; }))
      << CountKernelHandles() << " handles, were " << handles;
  EXPECT_EQ(CountWindows(), windows);
  EXPECT_LE(CountGdiObjects(), objects + kPlatformsOwn);
}

TEST_F(UserIdWizard, IsNotShownWithoutAProfile) {
  data.profile = nullptr;
  EXPECT_EQ(SetupWizardTether().ShowAsSecondaryWindow(nullptr, WizardId::UserIdAndService, &data), 0);
}

TEST(SetupWizard, IsNotShownWhenItIsUnknownOrHasNoData) {
  SetupWizardData_t data;
  data.profile = std::make_shared<Profile>(2001);
  EXPECT_EQ(SetupWizardTether().ShowAsSecondaryWindow(nullptr, WizardId{6}, &data), 0);
  EXPECT_EQ(SetupWizardTether().ShowAsSecondaryWindow(nullptr, WizardId::UserIdAndService, nullptr), 0);
}
