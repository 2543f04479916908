// The "General" page on the real sheet, over the sample settings.

#include <gmock/gmock.h>

#include <fstream>

#include "LoginProperties/General/GeneralControls.h"
#include "LoginProperties/General/RenameProfileControls.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/SheetResult.h"
#include "tests/support/BrowserStandIn.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestingIni.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/OtherConnection.h"
#include "tests/ui/RenameDriver.h"
#include "tests/ui/StoredSheetTest.h"
#include "WaylineDll/Host.h"

namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr wchar_t kLastProfile[] = L"You cannot remove the last profile.";
constexpr wchar_t kConnected[] = L"You are currently connected with this login profile, so it cannot be removed.";

constexpr int kServers[] = {IDC_GENERAL_CONFIGURE_SERVERS, IDC_GENERAL_SERVERS_HINT, IDC_GENERAL_SERVERS_GROUP,
                            IDC_GENERAL_SERVERS_ICON};
constexpr int kButtonsThatNeedAProfile[] = {IDC_GENERAL_RENAME, IDC_GENERAL_REMOVE, IDC_GENERAL_CONFIGURE_NETWORK,
                                            IDC_GENERAL_CONFIGURE_SERVERS};

class GeneralPage : public StoredSheetTest {
 protected:
  Profile& ProfileOf(uint32_t id) { return *context.profiles.at(id); }

  // Removes the current profile; returns what the user is asked or told.
  std::wstring Remove(int answer = IDYES) {
    sheet->Click(IDC_GENERAL_REMOVE);
    std::wstring text = sheet->MessageBoxText().value_or(L"");
    if (!text.empty()) sheet->AnswerMessageBox(answer);
    return text;
  }

  // Leaves only these profiles, and the defaults, to be selected.
  void HideAllBut(const std::set<uint32_t>& ids) {
    for (const auto& [id, profile] : context.profiles) {
      if (id > 2000) profile->SetHidden(!ids.contains(id));
    }
  }

  std::multiset<std::string> before = AllRows(file);
};

}  // namespace

TEST_F(GeneralPage, ShowsAccountUserIdAndServiceOfTheProfile) {
  Open();
  EXPECT_EQ(sheet->Text(IDC_GENERAL_ACCOUNT), L"Example Company");
  EXPECT_EQ(sheet->Text(IDC_GENERAL_USER_ID), L"a.sample");
  EXPECT_EQ(sheet->Text(IDC_GENERAL_SERVICE), L"Standard Access");
  sheet->Pick(IDC_PROFILE_COMBO, L"Travel");
  EXPECT_EQ(sheet->Text(IDC_GENERAL_ACCOUNT), L"Example Branches");
  EXPECT_EQ(sheet->Text(IDC_GENERAL_USER_ID), L"traveller");
  EXPECT_EQ(sheet->Text(IDC_GENERAL_SERVICE), L"Guest Internet");
}

TEST_F(GeneralPage, AServiceThatIsNotKnownShowsNoText) {
  ProfileOf(2003).SetLinkService(999);
  ProfileOf(2004).SetLinkService(0);
  Open();
  ASSERT_EQ(sheet->Text(IDC_GENERAL_SERVICE), L"Standard Access");
  sheet->Pick(IDC_PROFILE_COMBO, L"Travel");
  EXPECT_EQ(sheet->Text(IDC_GENERAL_SERVICE), L"") << "not that of the profile shown before";
  sheet->Pick(IDC_PROFILE_COMBO, L"Z\u00fcrich Office");
  EXPECT_EQ(sheet->Text(IDC_GENERAL_SERVICE), L"Standard Access") << "which profiles have that name none";
}

TEST_F(GeneralPage, WhatBelongsToTheProfileIsDarkBlue) {
  Open();
  const HDC device = GetDC(sheet->Page());
  const auto brushOf = [&](int id) {
    SetTextColor(device, RGB(0, 0, 0));
    SetBkMode(device, OPAQUE);
    return SendMessageW(sheet->Page(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(device),
                        reinterpret_cast<LPARAM>(sheet->Control(id)));
  };
  for (const int id : {IDC_GENERAL_ACCOUNT, IDC_GENERAL_USER_ID, IDC_GENERAL_SERVICE}) {
    EXPECT_EQ(brushOf(id), reinterpret_cast<LRESULT>(GetStockObject(NULL_BRUSH)));
    EXPECT_EQ(GetTextColor(device), RGB(0, 0, 192));
    EXPECT_EQ(GetBkMode(device), TRANSPARENT);
  }
  for (const int id : {IDC_GENERAL_ACCOUNT_LABEL, IDC_GENERAL_PROFILE_HINT}) {
    EXPECT_NE(brushOf(id), reinterpret_cast<LRESULT>(GetStockObject(NULL_BRUSH)));
    EXPECT_NE(GetTextColor(device), RGB(0, 0, 192));
  }
  ReleaseDC(sheet->Page(), device);
}

TEST_F(GeneralPage, TheServersAreShownOnlyWhereTheClientSaysSo) {
  for (const auto& [stored, visible] : {std::pair{"'1'", true}, std::pair{"'0'", false}, std::pair{"'yes'", false}}) {
    RunSql(file, std::string("UPDATE Bookmarks SET Value = ") + stored + " WHERE BookmarkId = 8");
    OpenOn(kSampleWork);
    for (const int id : kServers) EXPECT_EQ(IsWindowVisible(sheet->Control(id)) != FALSE, visible) << id << stored;
  }
  RunSql(file, "DELETE FROM Bookmarks");
  OpenOn(kSampleWork);
  for (const int id : kServers) EXPECT_FALSE(IsWindowVisible(sheet->Control(id))) << id;
  EXPECT_TRUE(IsWindowVisible(sheet->Control(IDC_GENERAL_CONFIGURE_NETWORK)));
}

TEST_F(GeneralPage, ShowsWhatOtherPagesHaveChanged) {
  Open();
  sheet->SelectTab(L"Timeouts");
  ProfileOf(kSampleWork).SetUserId(L"changed");
  sheet->Pick(IDC_PROFILE_COMBO, L"Travel");
  sheet->SelectTab(L"General");
  EXPECT_EQ(sheet->Selected(IDC_PROFILE_COMBO), L"Travel");
  EXPECT_EQ(sheet->Text(IDC_GENERAL_USER_ID), L"traveller");
  sheet->Pick(IDC_PROFILE_COMBO, L"Work");
  EXPECT_EQ(sheet->Text(IDC_GENERAL_USER_ID), L"changed");
}

TEST_F(GeneralPage, WithoutACurrentProfileTheButtonsForOneDoNothing) {
  context.currentProfile = nullptr;
  Open();
  EXPECT_EQ(sheet->Text(IDC_GENERAL_ACCOUNT), L"");
  for (const int button : kButtonsThatNeedAProfile) {
    sheet->Click(button);
    EXPECT_EQ(sheet->MessageBoxWindow(), nullptr) << button;
  }
  SaveWithOk();
  EXPECT_EQ(AllRows(file), before);
}

TEST_F(GeneralPage, OnTheLogOnDesktopTheSheetItselfOpensTheHelp) {
  const TestingIni ini("[GINA]\nRunnningInWinLogonDesktop=1\n");
  // Whether it is the log-on desktop is found out once per process.
  InOwnProcess([this] {
    Open();
    const BrowserStandIn browser;
    EXPECT_EQ(SendMessageW(sheet->Sheet(), WM_HELP, 0, 0), TRUE);
    EXPECT_EQ(browser.OpenedPage(), HelpPage(L"1031.html"));
  });
}

// Renaming

TEST_F(GeneralPage, RenamingAsksForANameBeginningWithTheOldOne) {
  Open();
  const RenameDriver dialog(*sheet);
  EXPECT_EQ(dialog.Title(), L"Rename Profile");
  EXPECT_EQ(dialog.Name(), L"Work");
  EXPECT_EQ(sheet->FocusedControl(), IDC_RENAME_NAME);
  EXPECT_EQ(SendMessageW(dialog.Field(), EM_GETSEL, 0, 0), MAKELRESULT(0, 4)) << "typing replaces it";
  EXPECT_FALSE(IsWindowEnabled(sheet->Sheet()));
  dialog.Close(IDCANCEL);
}

TEST_F(GeneralPage, ARenamedProfileIsShownAndSavedUnderItsNewName) {
  Open();
  RenameDriver(*sheet).Rename(L"  Head office ");
  EXPECT_EQ(sheet->Selected(IDC_PROFILE_COMBO), L"  Head office ") << "blanks are part of the name";
  EXPECT_EQ(ProfileOf(kSampleWork).GetState(), ChangeState::Renamed);
  sheet->SelectTab(L"Timeouts");
  EXPECT_EQ(sheet->Selected(IDC_PROFILE_COMBO), L"  Head office ");
  SaveWithOk();
  EXPECT_THAT(Without(before, AllRows(file)), ElementsAre("Profiles LinkProfile=1 Name=Work ProfileId=2001 "
                                                          "UserId=a.sample"));
  EXPECT_THAT(Without(AllRows(file), before), ElementsAre("Profiles LinkProfile=1 Name=  Head office  ProfileId=2001 "
                                                          "UserId=a.sample"));
}

TEST_F(GeneralPage, ANameIsTypedInEightyCharactersAtMost) {
  Open();
  {
    const RenameDriver dialog(*sheet);
    dialog.Type(std::wstring(100, L'x'));
    EXPECT_EQ(dialog.Name(), std::wstring(80, L'x'));
    dialog.Close(IDOK);
  }
  EXPECT_EQ(ProfileOf(kSampleWork).GetName(), std::wstring(80, L'x'));
}

TEST_F(GeneralPage, ALongNameThatIsThereIsShownWholeAndTakenUpTo259Characters) {
  ProfileOf(kSampleWork).SetName(std::wstring(300, L'x'));
  Open();
  const RenameDriver dialog(*sheet);
  EXPECT_THAT(dialog.Name(), SizeIs(300));
  dialog.Close(IDOK);
  EXPECT_EQ(ProfileOf(kSampleWork).GetName(), std::wstring(259, L'x'));
}

TEST_F(GeneralPage, AnEmptyNameKeepsTheDialogOpenAndShowsNothing) {
  Open();
  const RenameDriver dialog(*sheet);
  dialog.Type(L"");
  dialog.Press(IDOK);
  ASSERT_TRUE(dialog.IsOpen());
  EXPECT_TRUE(IsWindowEnabled(GetParent(dialog.Field()))) << "no message over it";
  dialog.Close(IDCANCEL);
  EXPECT_EQ(ProfileOf(kSampleWork).GetName(), L"Work");
  EXPECT_EQ(ProfileOf(kSampleWork).GetState(), ChangeState::Unchanged);
}

TEST_F(GeneralPage, CancelOfTheDialogChangesNothing) {
  Open();
  const RenameDriver dialog(*sheet);
  dialog.Type(L"Other");
  dialog.Close(IDCANCEL);
  EXPECT_EQ(sheet->Selected(IDC_PROFILE_COMBO), L"Work");
  EXPECT_EQ(ProfileOf(kSampleWork).GetState(), ChangeState::Unchanged);
}

TEST_F(GeneralPage, TheSameNameStillMarksTheProfileAsRenamed) {
  Open();
  RenameDriver(*sheet).Rename(L"Work");
  EXPECT_EQ(ProfileOf(kSampleWork).GetState(), ChangeState::Renamed);
  SaveWithOk();
  EXPECT_EQ(AllRows(file), before) << "there is nothing to write";
}

TEST_F(GeneralPage, TheNameOfAnotherProfileIsTakenAndTheSelectorStaysOnTheRightOne) {
  OpenOn(2003);
  RenameDriver(*sheet).Rename(L"Work");
  EXPECT_EQ(sheet->SelectedValue(IDC_PROFILE_COMBO), 2003u);
  EXPECT_EQ(sheet->Text(IDC_GENERAL_USER_ID), L"traveller");
  EXPECT_THAT(Remove(), HasSubstr(L"Work"));
  EXPECT_EQ(ProfileOf(2003).GetState(), ChangeState::Removed) << "the one that was shown";
  EXPECT_EQ(ProfileOf(kSampleWork).GetState(), ChangeState::Unchanged);
}

// Removing

TEST_F(GeneralPage, OfTwoProfilesOneCanBeRemoved) {
  HideAllBut({2001, 2003});
  context.currentProfile = context.profiles.at(2003);
  Open();
  EXPECT_EQ(Remove(), L"Do you want to remove the definitions for Travel?");
  EXPECT_THAT(sheet->Items(IDC_PROFILE_COMBO), ElementsAre(L"Work"));
  EXPECT_EQ(sheet->Selected(IDC_PROFILE_COMBO), L"Work");
  EXPECT_EQ(sheet->Text(IDC_GENERAL_USER_ID), L"a.sample");
  EXPECT_EQ(Remove(IDOK), kLastProfile);
  EXPECT_EQ(ProfileOf(kSampleWork).GetState(), ChangeState::Unchanged);
  EXPECT_THAT(sheet->Items(IDC_PROFILE_COMBO), ElementsAre(L"Work"));
}

TEST_F(GeneralPage, UnderAQuestionTheSheetNeitherClosesNorAsksAnother) {
  OpenOn(2003);
  sheet->Click(IDC_GENERAL_REMOVE);
  const HWND question = sheet->MessageBoxWindow();
  ASSERT_NE(question, nullptr);
  EXPECT_EQ(sheet->FocusedControl(), IDNO) << "a second key press removes nothing";
  PostMessageW(sheet->Sheet(), WM_CLOSE, 0, 0);
  for (const int button : {IDC_GENERAL_REMOVE, IDC_GENERAL_NEW, IDC_GENERAL_RENAME}) {
    SendMessageW(sheet->Page(), WM_COMMAND, static_cast<WPARAM>(button), 0);
    EXPECT_EQ(sheet->MessageBoxWindow(), question) << button;
  }
  sheet->AnswerMessageBox(IDYES);
  EXPECT_EQ(ProfileOf(2003).GetState(), ChangeState::Removed);
  SaveWithOk();
  EXPECT_EQ(StoredValue(file, "SELECT count(*) FROM Profiles WHERE ProfileId = 2003"), "0");
}

TEST_F(GeneralPage, NoKeepsTheProfile) {
  OpenOn(2003);
  EXPECT_EQ(Remove(IDNO), L"Do you want to remove the definitions for Travel?");
  EXPECT_EQ(sheet->Selected(IDC_PROFILE_COMBO), L"Travel");
  EXPECT_EQ(ProfileOf(2003).GetState(), ChangeState::Unchanged);
  EXPECT_FALSE(ProfileOf(2003).GetHidden());
}

TEST_F(GeneralPage, AfterARemovalTheLowestIdThatIsListedIsShown) {
  HideAllBut({2002, 2003, 2004});
  context.currentProfile = context.profiles.at(2004);
  Open();
  Remove();
  EXPECT_EQ(sheet->SelectedValue(IDC_PROFILE_COMBO), 2002u) << "by id, not by name, and never the defaults";
}

TEST_F(GeneralPage, ARemovedProfileGoesWithItsRowsOnlyAfterOk) {
  OpenOn(2004);
  Remove();
  EXPECT_EQ(AllRows(file), before);
  SaveWithOk();
  const auto removed = Without(before, AllRows(file));
  EXPECT_THAT(removed, SizeIs(1 + 27 + 8 + 2)) << "with its preferences, entries and proxies";
  EXPECT_THAT(removed, Each(HasSubstr("ProfileId=2004")));
  EXPECT_THAT(Without(AllRows(file), before), ElementsAre("ClientState Name=LastRemovedProfile Value=2004"));
}

TEST_F(GeneralPage, CancelOfTheSheetKeepsARemovedAndARenamedProfile) {
  OpenOn(2004);
  Remove();
  RenameDriver(*sheet).Rename(L"Renamed");
  sheet->PressCancel();
  EXPECT_NE(sheet->Result(), kSheetConfirmed);
  DiscardChanges();
  EXPECT_EQ(AllRows(file), before);
  OpenOn(2004);
  EXPECT_THAT(sheet->Items(IDC_PROFILE_COMBO), Contains(L"Z\u00fcrich Office"));
  EXPECT_THAT(sheet->Items(IDC_PROFILE_COMBO), Not(Contains(L"Renamed")));
}

TEST_F(GeneralPage, TheActiveProfileCannotBeRemovedWhileConnected) {
  ASSERT_EQ(SetConnectionState(FSMState::Connected), std::nullopt);
  Open();
  EXPECT_EQ(Remove(IDOK), kConnected);
  EXPECT_EQ(sheet->MessageBoxWindow(), nullptr) << "nothing is asked";
  EXPECT_EQ(ProfileOf(kSampleWork).GetState(), ChangeState::Unchanged);
  sheet->Pick(IDC_PROFILE_COMBO, L"Travel");
  EXPECT_EQ(Remove(IDNO), L"Do you want to remove the definitions for Travel?") << "another one can";
  ASSERT_EQ(SetConnectionState(FSMState::Disconnected), std::nullopt);
  sheet->Pick(IDC_PROFILE_COMBO, L"Work");
  EXPECT_EQ(Remove(), L"Do you want to remove the definitions for Work?");
  EXPECT_EQ(ProfileOf(kSampleWork).GetState(), ChangeState::Removed);
}

TEST_F(GeneralPage, AProfileThatOthersFollowCannotBeRemovedAndTheyAreNamed) {
  RunSql(file, "UPDATE Profiles SET LinkProfile = 2003 WHERE ProfileId IN (2002, 10001)");
  OpenOn(2003);
  EXPECT_EQ(Remove(IDOK), L"Travel cannot be removed. These profiles follow its settings:\n\nWork 2, Visitor");
  EXPECT_EQ(ProfileOf(2003).GetState(), ChangeState::Unchanged);
  EXPECT_EQ(sheet->Selected(IDC_PROFILE_COMBO), L"Travel");
}

TEST_F(GeneralPage, OneThatTheSelectorDoesNotShowIsNotRemoved) {
  context.currentProfile = context.profiles.at(1);
  Open();
  ASSERT_EQ(sheet->Selected(IDC_PROFILE_COMBO), std::nullopt);
  EXPECT_EQ(Remove(), L"");
  EXPECT_EQ(ProfileOf(1).GetState(), ChangeState::Unchanged);
}

TEST_F(GeneralPage, WithEveryProfileHiddenNothingIsRemoved) {
  HideAllBut({});
  Open();
  ASSERT_THAT(sheet->Items(IDC_PROFILE_COMBO), IsEmpty());
  EXPECT_EQ(Remove(IDOK), kLastProfile);
  EXPECT_EQ(ProfileOf(kSampleWork).GetState(), ChangeState::Unchanged);
  EXPECT_EQ(sheet->Text(IDC_GENERAL_USER_ID), L"a.sample") << "it stays the current one";
}
