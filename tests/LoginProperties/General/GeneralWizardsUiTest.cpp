// What the wizards of the "General" page make of profiles, from the button to the settings database.

#include <gmock/gmock.h>

#include <map>

#include "LoginProperties/Autostart/AutostartControls.h"
#include "LoginProperties/General/GeneralControls.h"
#include "LoginProperties/Preferences/PreferenceControls.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/SheetResult.h"
#include "LoginProperties/Timeouts/TimeoutControls.h"
#include "tests/support/TreeItems.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/AutostartPageDriver.h"
#include "tests/ui/OtherConnection.h"
#include "tests/ui/StoredSheetTest.h"
#include "tests/ui/WizardDriver.h"
#include "WaylineDll/Host.h"
#include "WaylineDll/SetupWizard/WizardControls.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr uint32_t kNew = 2006;  // the first id that is free
constexpr wchar_t kOfficeName[] = L"Z\u00fcrich Office";
constexpr wchar_t kAutoConnect[] = L"Automatically connect if password saved";
constexpr wchar_t kManual[] = L"Use this:";
constexpr wchar_t kNoNewProfile[] =
    L"A new login profile cannot be made now. No number is left for it, or the settings cannot be read.";

class GeneralWizards : public StoredSheetTest {
 protected:
  Profile& ProfileOf(uint32_t id) { return *context.profiles.at(id); }

  // Presses a button of the page, which opens a wizard over the sheet.
  WizardDriver& OpenWizard(int button) {
    sheet->Click(button);
    return wizard.emplace(GetWindowThreadProcessId(sheet->Sheet(), nullptr));
  }

  void GoTo(WizardPage page) {
    while (wizard->CurrentPage() != page) {
      const auto from = wizard->CurrentPage();
      wizard->PressNext();
      ASSERT_EQ(wizard->MessageBoxText(), std::nullopt);
      ASSERT_NE(wizard->CurrentPage(), from);
    }
  }

  void Finish() {
    wizard->PressFinish();
    ExpectEnd();
  }

  void Cancel() {
    wizard->PressCancel();
    ExpectEnd();
  }

  // The wizard has gone, and the page has dealt with what came of it.
  void ExpectEnd() {
    ASSERT_TRUE(WaitUntil([this] { return !wizard->IsOpen() && IsWindowEnabled(sheet->Sheet()) != FALSE; }));
    wizard.reset();
    sheet->SelectTab(L"Proxy");
    sheet->SelectTab(L"General");
  }

  // Makes a profile of this name with the wizard, and with nothing else entered.
  void MakeNew(const std::wstring& name) {
    OpenWizard(IDC_GENERAL_NEW).Type(IDC_WIZARD_NAME, name);
    GoTo(WizardPage::Summary);
    Finish();
  }

  void MakeCopy(const std::wstring& name, const std::wstring& source) {
    OpenWizard(IDC_GENERAL_NEW).Type(IDC_WIZARD_NAME, name);
    GoTo(WizardPage::Copy);
    wizard->Pick(IDC_WIZARD_COPY, source);
    GoTo(WizardPage::Summary);
    Finish();
  }

  // The rows that saving has added and taken away.
  std::multiset<std::string> Added() const { return Without(AllRows(file), before); }
  std::multiset<std::string> Taken() const { return Without(before, AllRows(file)); }

  // The rows of preferences and entries of a profile, as another one would have them.
  std::multiset<std::string> ListsOf(uint32_t id, uint32_t asOf) const {
    const std::string own = " ProfileId=" + std::to_string(id);
    std::multiset<std::string> rows;
    for (std::string row : AllRows(file)) {
      const size_t place = row.find(own);
      if (place == std::string::npos || row.starts_with("Profiles") || row.starts_with("ConfigSettings")) continue;
      rows.insert(row.replace(place, own.size(), " ProfileId=" + std::to_string(asOf)));
    }
    return rows;
  }

  std::multiset<std::string> before = AllRows(file);
  std::optional<WizardDriver> wizard;
};

}  // namespace

// User ID and network service

TEST_F(GeneralWizards, StandOverTheSheetWhichTakesNoInputMeanwhile) {
  Open();
  for (const int button : {IDC_GENERAL_CONFIGURE_NETWORK, IDC_GENERAL_CONFIGURE_SERVERS, IDC_GENERAL_NEW}) {
    const WizardDriver& opened = OpenWizard(button);
    EXPECT_EQ(GetWindow(opened.Window(), GW_OWNER), sheet->Sheet());
    EXPECT_FALSE(IsWindowEnabled(sheet->Sheet()));
    Cancel();
    EXPECT_TRUE(IsWindowEnabled(sheet->Sheet()));
  }
}

TEST_F(GeneralWizards, KeepTheSheetOpenAsLongAsTheyAre) {
  Open();
  OpenWizard(IDC_GENERAL_CONFIGURE_NETWORK).Type(IDC_WIZARD_USER_ID, L"b.sample");
  PostMessageW(sheet->Sheet(), WM_CLOSE, 0, 0);
  wizard->PressNext();
  Finish();
  ASSERT_TRUE(sheet->IsOpen());
  SaveWithOk();
  EXPECT_EQ(StoredValue(file, "SELECT UserId FROM Profiles WHERE ProfileId = 2001"), "b.sample");
}

TEST_F(GeneralWizards, ANewProfileAfterACancelledOneHasItsId) {
  Open();
  for (int time = 0; time < 3; ++time) {
    OpenWizard(IDC_GENERAL_NEW);
    Cancel();
  }
  MakeNew(L"Home");
  EXPECT_EQ(sheet->SelectedValue(IDC_PROFILE_COMBO), kNew);
  SaveWithOk();
  EXPECT_THAT(Added(), ElementsAre("Profiles LinkProfile=1 Name=Home ProfileId=2006"));
}

TEST_F(GeneralWizards, ConfiguringWithoutAChangeMarksNothing) {
  Open();
  OpenWizard(IDC_GENERAL_CONFIGURE_NETWORK).PressNext();
  Finish();
  EXPECT_EQ(ProfileOf(kSampleWork).GetState(), ChangeState::Unchanged);
  SaveWithOk();
  EXPECT_EQ(AllRows(file), before);
}

TEST_F(GeneralWizards, AnotherServiceAloneIsTakenAlone) {
  Open();
  OpenWizard(IDC_GENERAL_CONFIGURE_NETWORK).PressNext();
  wizard->Pick(IDC_WIZARD_SERVICE, L"Guest Internet");
  Finish();
  EXPECT_EQ(sheet->Text(IDC_GENERAL_SERVICE), L"Guest Internet");
  EXPECT_EQ(ProfileOf(kSampleWork).GetState(), ChangeState::Changed);
  SaveWithOk();
  EXPECT_THAT(Taken(), ElementsAre("Profiles LinkProfile=1 Name=Work ProfileId=2001 UserId=a.sample"));
  EXPECT_THAT(Added(), ElementsAre("Profiles LinkProfile=1 LinkService=402 Name=Work ProfileId=2001 UserId=a.sample"));
}

TEST_F(GeneralWizards, AccountAndUserIdAreShownAndSaved) {
  Open();
  OpenWizard(IDC_GENERAL_CONFIGURE_NETWORK).Type(IDC_WIZARD_ACCOUNT, L"Other Company");
  wizard->Type(IDC_WIZARD_USER_ID, L"b.sample");
  wizard->PressNext();
  Finish();
  EXPECT_EQ(sheet->Text(IDC_GENERAL_ACCOUNT), L"Other Company");
  EXPECT_EQ(sheet->Text(IDC_GENERAL_USER_ID), L"b.sample");
  SaveWithOk();
  EXPECT_THAT(Added(),
              ElementsAre("Profiles Account=Other Company LinkProfile=1 Name=Work ProfileId=2001 UserId=b.sample"));
}

TEST_F(GeneralWizards, WhatACancelledWizardWasToldIsForgotten) {
  Open();
  OpenWizard(IDC_GENERAL_CONFIGURE_NETWORK).Type(IDC_WIZARD_USER_ID, L"b.sample");
  wizard->PressNext();
  wizard->Pick(IDC_WIZARD_SERVICE, L"Guest Internet");
  Cancel();
  OpenWizard(IDC_GENERAL_CONFIGURE_SERVERS).Pick(IDC_WIZARD_DNS1_MODE, kManual);
  wizard->Type(IDC_WIZARD_DNS1, L"192.0.2.53");
  wizard->PressNext();
  Cancel();
  OpenWizard(IDC_GENERAL_NEW).Type(IDC_WIZARD_NAME, L"New");
  GoTo(WizardPage::Copy);
  wizard->Pick(IDC_WIZARD_COPY, kOfficeName);
  GoTo(WizardPage::Summary);
  Cancel();
  EXPECT_EQ(sheet->Text(IDC_GENERAL_USER_ID), L"a.sample");
  EXPECT_EQ(sheet->Text(IDC_GENERAL_SERVICE), L"Standard Access");
  EXPECT_EQ(sheet->Selected(IDC_PROFILE_COMBO), L"Work");
  for (const auto& [id, profile] : context.profiles) EXPECT_EQ(profile->GetState(), ChangeState::Unchanged) << id;
  SaveWithOk();
  EXPECT_EQ(AllRows(file), before);
}

// Servers

TEST_F(GeneralWizards, ServersAreSavedWithTheirModes) {
  Open();
  OpenWizard(IDC_GENERAL_CONFIGURE_SERVERS).Pick(IDC_WIZARD_DNS1_MODE, kManual);
  wizard->Type(IDC_WIZARD_DNS1, L"2001:db8::53");
  wizard->Pick(IDC_WIZARD_WINS1_MODE, L"None");
  wizard->PressNext();
  wizard->Pick(IDC_WIZARD_SUFFIXES_MODE, kManual);
  wizard->Type(IDC_WIZARD_SUFFIXES, L"example.com; example.org");
  Finish();
  SaveWithOk();
  EXPECT_THAT(Taken(), ElementsAre("Profiles LinkProfile=1 Name=Work ProfileId=2001 UserId=a.sample"));
  EXPECT_THAT(Added(),
              UnorderedElementsAre("Profiles DNS1Setting=m LinkProfile=1 Name=Work ProfileId=2001 SearchListSetting=m "
                                   "UserId=a.sample WINS1Setting=n",
                                   "ConfigSettings AutoProxyUrl= Automatic=0 Dns1=2001:db8::53 Dns2= DomainName= "
                                   "ManualProxy= ProfileId=2001 ProxyExceptions= SearchList=example.com,example.org "
                                   "Wins1= Wins2="));
}

TEST_F(GeneralWizards, ServersThatWereOnlyLookedAtWriteNothing) {
  OpenOn(kSampleOffice);
  OpenWizard(IDC_GENERAL_CONFIGURE_SERVERS).PressNext();
  Finish();
  EXPECT_EQ(ProfileOf(kSampleOffice).GetState(), ChangeState::Changed);
  SaveWithOk();
  EXPECT_EQ(AllRows(file), before);
}

// New profiles

TEST_F(GeneralWizards, ANewProfileIsShownAtOnceAndStoredAsWhatWasEntered) {
  Open();
  MakeNew(L"Home");
  EXPECT_EQ(sheet->SelectedValue(IDC_PROFILE_COMBO), kNew);
  EXPECT_EQ(sheet->Text(IDC_GENERAL_ACCOUNT), L"Example Company") << "of its defaults";
  EXPECT_EQ(AllRows(file), before) << "not before OK";
  SaveWithOk();
  EXPECT_EQ(ProfileOf(kNew).GetState(), ChangeState::New);
  EXPECT_THAT(Taken(), IsEmpty());
  EXPECT_THAT(Added(), ElementsAre("Profiles LinkProfile=1 Name=Home ProfileId=2006"));
}

TEST_F(GeneralWizards, ANewProfileWithEverythingIsStoredRowByRow) {
  Open();
  OpenWizard(IDC_GENERAL_NEW).Type(IDC_WIZARD_NAME, L"Everything");
  wizard->PressNext();
  wizard->Pick(IDC_WIZARD_DEFAULTS, L"Field Service");
  wizard->PressNext();
  wizard->Type(IDC_WIZARD_ACCOUNT, L"Account");
  wizard->Type(IDC_WIZARD_USER_ID, L"user@example.com");
  wizard->PressNext();
  wizard->Pick(IDC_WIZARD_SERVICE, L"Guest Internet");
  wizard->PressNext();
  wizard->Click(IDC_WIZARD_SET_SERVERS);
  wizard->PressNext();
  wizard->Pick(IDC_WIZARD_DNS2_MODE, kManual);
  wizard->Type(IDC_WIZARD_DNS2, L"192.0.2.53");
  wizard->PressNext();
  wizard->PressNext();
  wizard->Pick(IDC_WIZARD_COPY, kOfficeName);
  wizard->PressNext();
  ASSERT_EQ(wizard->CurrentPage(), WizardPage::Summary);
  Finish();
  EXPECT_EQ(sheet->Text(IDC_GENERAL_USER_ID), L"user@example.com");
  EXPECT_EQ(sheet->Text(IDC_GENERAL_SERVICE), L"Guest Internet");
  SaveWithOk();
  EXPECT_EQ(ProfileOf(kNew).GetSMIdleTime(), Profile::Seconds(120)) << "in force for its defaults";
  std::multiset<std::string> expected = ListsOf(kSampleOffice, kNew);
  expected.insert(
      "Profiles Account=Account DNS2Setting=m DefaultAutostart=0 DefaultPreferences=0 LinkProfile=100 "
      "LinkService=402 Name=Everything ProfileId=2006 UserId=user@example.com");
  expected.insert(
      "ConfigSettings AutoProxyUrl= Automatic=0 Dns1= Dns2=192.0.2.53 DomainName= ManualProxy= ProfileId=2006 "
      "ProxyExceptions= SearchList= Wins1= Wins2=");
  EXPECT_EQ(Added(), expected);
  EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(GeneralWizards, CopiesSurviveEveryLookAtOtherTabsAndProfiles) {
  OpenOn(kSampleOffice);
  sheet->SelectTab(L"Preferences");
  sheet->SelectTab(L"Autostart");
  sheet->SelectTab(L"General");
  MakeCopy(L"Copy", kOfficeName);
  for (const wchar_t* profile : {L"Work", L"Copy", L"Travel"}) {
    for (const wchar_t* tab : {L"Preferences", L"Autostart", L"Proxy", L"Timeouts", L"General"}) {
      sheet->SelectTab(tab);
      sheet->Pick(IDC_PROFILE_COMBO, profile);
    }
  }
  SaveWithOk();
  EXPECT_EQ(ListsOf(kNew, kNew), ListsOf(kSampleOffice, kNew));
  EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(GeneralWizards, CopiesCanBeChangedBeforeOk) {
  Open();
  MakeCopy(L"Copy", kOfficeName);
  sheet->SelectTab(L"Preferences");
  EXPECT_TRUE(sheet->IsChecked(IDC_OVERRIDE_CHECK)) << "as in the source";
  const HWND tree = sheet->Control(IDC_PREFERENCE_TREE);
  TreeView_SelectItem(tree, FindTreeItem(tree, kAutoConnect));
  SendMessageW(tree, WM_CHAR, L' ', 0);
  ASSERT_TRUE(WaitUntil([&] { return TreeItemImage(tree, FindTreeItem(tree, kAutoConnect)) == 1; }));
  SaveWithOk();
  EXPECT_EQ(StoredValue(file, "SELECT State FROM Preferences WHERE PreferenceId = 1014 AND ProfileId = 2006"), "1");
  EXPECT_EQ(StoredValue(file, "SELECT State FROM Preferences WHERE PreferenceId = 1014 AND ProfileId = 2004"), "2");
  EXPECT_EQ(StoredValue(file, "SELECT count(*) FROM Preferences WHERE ProfileId = 2006"), "27");
}

TEST_F(GeneralWizards, WhatWasToggledInTheSourceIsCopied) {
  OpenOn(kSampleOffice);
  sheet->SelectTab(L"Preferences");
  const HWND tree = sheet->Control(IDC_PREFERENCE_TREE);
  TreeView_SelectItem(tree, FindTreeItem(tree, kAutoConnect));
  SendMessageW(tree, WM_CHAR, L' ', 0);
  ASSERT_TRUE(WaitUntil([&] { return TreeItemImage(tree, FindTreeItem(tree, kAutoConnect)) == 1; }));
  sheet->SelectTab(L"General");
  MakeCopy(L"Copy", kOfficeName);
  SaveWithOk();
  for (const uint32_t id : {kSampleOffice, kNew}) {
    EXPECT_EQ(StoredValue(file, "SELECT State FROM Preferences WHERE PreferenceId = 1014 AND ProfileId = " +
                                    std::to_string(id)),
              "1");
  }
}

TEST_F(GeneralWizards, CopiedEntriesAreShownOnTheirPageAndCanBeEditedThere) {
  OpenOn(kSampleOffice);
  const AutostartPageDriver page(*sheet);
  sheet->SelectTab(L"Autostart");
  const auto ofOffice = page.Lines();
  sheet->SelectTab(L"General");
  MakeCopy(L"Copy", kOfficeName);
  sheet->SelectTab(L"Autostart");
  EXPECT_TRUE(sheet->IsChecked(IDC_OVERRIDE_CHECK)) << "as in the source";
  EXPECT_EQ(page.Lines(), ofOffice);
  page.Select(L"Notes");
  sheet->Click(IDC_AUTOSTART_DOWN);
  page.Select(L"Goodbye");
  sheet->Click(IDC_AUTOSTART_REMOVE);
  sheet->AnswerMessageBox(IDYES);
  const auto ofCopy = page.Lines();
  sheet->Pick(IDC_PROFILE_COMBO, kOfficeName);
  EXPECT_EQ(page.Lines(), ofOffice) << "the source keeps its own";
  sheet->Pick(IDC_PROFILE_COMBO, L"Copy");
  EXPECT_EQ(page.Lines(), ofCopy);
  SaveWithOk();
  EXPECT_EQ(StoredValue(file,
                        "SELECT group_concat(Name) FROM (SELECT Name FROM AutoStart WHERE RecordType = 2 AND "
                        "ProfileId = 2006 ORDER BY Phase, ItemOrder)"),
            "Device check,Calculator,Notes");
  EXPECT_EQ(StoredValue(file, "SELECT count(*) FROM AutoStart WHERE ProfileId = 2006"), "7") << "once each";
  EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(GeneralWizards, WhatWasEditedInTheSourcesEntriesIsCopied) {
  OpenOn(kSampleOffice);
  const AutostartPageDriver page(*sheet);
  sheet->SelectTab(L"Autostart");
  {
    const EntryEditorDriver editor(*sheet, IDC_AUTOSTART_ADD);
    editor.Enter(L"Clock");
    editor.Close(IDOK);
  }
  page.Select(L"Notes");
  sheet->Click(IDC_AUTOSTART_REMOVE);
  sheet->AnswerMessageBox(IDYES);
  const auto ofOffice = page.Lines();
  sheet->SelectTab(L"General");
  MakeCopy(L"Copy", kOfficeName);
  sheet->SelectTab(L"Autostart");
  EXPECT_EQ(page.Lines(), ofOffice);
  SaveWithOk();
  EXPECT_EQ(ListsOf(kNew, kNew), ListsOf(kSampleOffice, kNew));
  EXPECT_EQ(StoredValue(file, "SELECT count(*) FROM AutoStart WHERE Name = 'Clock'"), "2");
}

TEST_F(GeneralWizards, ANewProfileShowsItsDefaultsEntriesAndCanGetItsOwn) {
  Open();
  MakeNew(L"Home");
  const AutostartPageDriver page(*sheet);
  sheet->SelectTab(L"Autostart");
  EXPECT_FALSE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  const auto inherited = page.Lines();
  EXPECT_THAT(inherited, testing::Contains(L" Company portal"));
  sheet->Click(IDC_OVERRIDE_CHECK);
  EXPECT_EQ(page.Lines(), inherited);
  {
    const EntryEditorDriver editor(*sheet, IDC_AUTOSTART_ADD);
    editor.Enter(L"Clock");
    editor.Close(IDOK);
  }
  sheet->Pick(IDC_PROFILE_COMBO, L"Work");
  EXPECT_EQ(page.Lines(), inherited);
  SaveWithOk();
  EXPECT_EQ(StoredValue(file,
                        "SELECT group_concat(Name) FROM (SELECT Name FROM AutoStart WHERE RecordType = 2 AND "
                        "ProfileId = 2006 ORDER BY Phase, ItemOrder)"),
            "Device check,Clock,Company portal");
}

TEST_F(GeneralWizards, ANewProfileThatIsRemovedTakesItsEntriesWithIt) {
  Open();
  MakeCopy(L"Home", kOfficeName);
  sheet->SelectTab(L"Autostart");
  {
    const EntryEditorDriver editor(*sheet, IDC_AUTOSTART_ADD);
    editor.Enter(L"Clock");
    editor.Close(IDOK);
  }
  sheet->SelectTab(L"General");
  sheet->Click(IDC_GENERAL_REMOVE);
  sheet->AnswerMessageBox(IDYES);
  sheet->SelectTab(L"Autostart");
  EXPECT_THAT(AutostartPageDriver(*sheet).Lines(), testing::Not(testing::Contains(L" Clock")));
  SaveWithOk();
  EXPECT_EQ(AllRows(file), before);
}

TEST_F(GeneralWizards, ANewProfileCanBeEditedOnEveryPageBeforeOk) {
  Open();
  MakeNew(L"Home");
  for (const wchar_t* tab : {L"Preferences", L"Autostart", L"Proxy"}) {
    sheet->SelectTab(tab);
    EXPECT_EQ(sheet->Selected(IDC_PROFILE_COMBO), L"Home");
    sheet->Click(IDC_OVERRIDE_CHECK);
  }
  sheet->SelectTab(L"Timeouts");
  sheet->Click(IDC_OVERRIDE_CHECK);
  sheet->Pick(IDC_TIMEOUT_DURATION, L" 1 hour");
  sheet->SelectTab(L"Wi-Fi Switching");
  sheet->SelectTab(L"General");
  SaveWithOk();
  EXPECT_EQ(StoredValue(file,
                        "SELECT DefaultPreferences || DefaultAutostart || DefaultProxy || DefaultTimeouts || ' ' "
                        "|| DurationTime || ' ' || WarnTime FROM Profiles WHERE ProfileId = 2006"),
            "0000 3600 60");
  EXPECT_EQ(StoredValue(file, "SELECT count(*) FROM Preferences WHERE ProfileId = 2006"), "27");
  EXPECT_EQ(StoredValue(file, "SELECT count(*) FROM AutoStart WHERE ProfileId = 2006"), "6") << "as inherited";
}

TEST_F(GeneralWizards, ANewProfileThatIsRemovedAgainLeavesNoTrace) {
  Open();
  MakeCopy(L"Home", kOfficeName);
  sheet->Click(IDC_GENERAL_REMOVE);
  ASSERT_EQ(sheet->MessageBoxText(), L"Do you want to remove the definitions for Home?");
  sheet->AnswerMessageBox(IDYES);
  EXPECT_EQ(sheet->SelectedValue(IDC_PROFILE_COMBO), kSampleWork);
  SaveWithOk();
  EXPECT_EQ(AllRows(file), before);
}

TEST_F(GeneralWizards, ANameThatARemovedProfileHadIsFree) {
  OpenOn(kSampleOffice);
  sheet->Click(IDC_GENERAL_REMOVE);
  sheet->AnswerMessageBox(IDYES);
  MakeNew(L"z\u00dcRICH office");
  EXPECT_EQ(sheet->SelectedValue(IDC_PROFILE_COMBO), kNew);
  SaveWithOk();
  EXPECT_EQ(StoredValue(file, "SELECT count(*) FROM Profiles WHERE ProfileId IN (2004, 2006)"), "1");
}

TEST_F(GeneralWizards, TheFirstProfileCanBeMadeWhereNoneCanBeSelected) {
  RunSql(file, "UPDATE Profiles SET Hidden = 1");
  Load(kSampleWork);
  context.currentProfile = nullptr;
  before = AllRows(file);
  Open();
  ASSERT_THAT(sheet->Items(IDC_PROFILE_COMBO), IsEmpty());
  MakeNew(L"First");
  EXPECT_THAT(sheet->Items(IDC_PROFILE_COMBO), ElementsAre(L"First"));
  EXPECT_EQ(sheet->Selected(IDC_PROFILE_COMBO), L"First");
  SaveWithOk();
  EXPECT_THAT(Added(), ElementsAre("Profiles Hidden=0 LinkProfile=1 Name=First ProfileId=2006"));
}

TEST_F(GeneralWizards, ThatNoProfileCanBeMadeIsTold) {
  RunSql(file,
         "WITH RECURSIVE Ids(Id) AS (SELECT 2006 UNION ALL SELECT Id + 1 FROM Ids WHERE Id < 9999) "
         "INSERT INTO Profiles (ProfileId, Name, LinkProfile) SELECT Id, 'Taken', 1 FROM Ids");
  OpenOn(kSampleWork);
  sheet->Click(IDC_GENERAL_NEW);
  ASSERT_TRUE(WaitUntil([this] { return sheet->MessageBoxText() == kNoNewProfile; }));
  sheet->AnswerMessageBox(IDOK);
  EXPECT_EQ(sheet->SelectedValue(IDC_PROFILE_COMBO), kSampleWork);
}

TEST_F(GeneralWizards, AKeyboardAloneMakesAProfileFromTheSheetsOpeningToOk) {
  Open();
  const auto tabTo = [this](int control) {
    ASSERT_TRUE(WaitUntil([this] { return sheet->FocusedControl() != 0; }));
    for (int tabs = 0; !sheet->HasFocus(control) && tabs < 20; ++tabs) {
      const int from = sheet->FocusedControl();
      ASSERT_TRUE(sheet->PressKeyUntil([&] { return sheet->FocusedControl() != from; }, VK_TAB));
    }
  };
  tabTo(IDC_GENERAL_NEW);
  const DWORD thread = GetWindowThreadProcessId(sheet->Sheet(), nullptr);
  ASSERT_TRUE(sheet->PressKeyUntil(
      [&] { return sheet->MessageBoxWindow() != nullptr || !IsWindowEnabled(sheet->Sheet()); }, VK_SPACE));
  wizard.emplace(thread);
  const auto type = [this](int field, const std::string& text) {
    ASSERT_TRUE(WaitUntil([&] { return wizard->FocusedControl() == field; })) << field;
    std::wstring typed;
    for (const char key : text) {
      typed += static_cast<wchar_t>(key);
      ASSERT_TRUE(
          wizard->PressKeyUntil([&] { return wizard->Text(field) == typed; }, static_cast<WORD>(key - 'a' + 'A')));
    }
  };
  const auto enter = [this] {
    const auto page = wizard->CurrentPage();
    ASSERT_TRUE(wizard->PressKeyUntil([&] { return wizard->CurrentPage() != page; }, VK_RETURN));
  };
  type(IDC_WIZARD_NAME, "home");
  enter();
  ASSERT_TRUE(wizard->PressKeyUntil([&] { return wizard->Selected(IDC_WIZARD_DEFAULTS) == L"Field Service"; }, 'F'));
  enter();
  ASSERT_EQ(wizard->CurrentPage(), WizardPage::UserId);
  ASSERT_TRUE(wizard->PressKeyUntil([&] { return wizard->FocusedControl() == IDC_WIZARD_USER_ID; }, 'U', {VK_MENU}));
  ASSERT_TRUE(wizard->PressKeyUntil([&] { return wizard->Text(IDC_WIZARD_USER_ID).empty(); }, VK_DELETE));
  type(IDC_WIZARD_USER_ID, "user");
  while (wizard->CurrentPage() != WizardPage::Summary && !HasFailure()) enter();
  ASSERT_TRUE(wizard->PressKeyUntil([&] { return !wizard->IsOpen(); }, VK_RETURN));
  wizard.reset();
  ASSERT_TRUE(WaitUntil([this] { return sheet->Selected(IDC_PROFILE_COMBO) == L"home"; }));
  tabTo(IDOK);
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return !sheet->IsOpen(); }, VK_SPACE));
  SaveWithOk();
  EXPECT_THAT(Added(), ElementsAre("Profiles LinkProfile=100 Name=home ProfileId=2006 UserId=user"));
}
