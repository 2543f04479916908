// The "Proxy" page on the real sheet, over the sample settings.

#include <gmock/gmock.h>

#include <array>
#include <fstream>
#include <optional>

#include "LoginProperties/General/GeneralControls.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Proxy/ProxyControls.h"
#include "LoginProperties/Proxy/ProxyRules.h"
#include "LoginProperties/SheetResult.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/BrowserStandIn.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/OtherConnection.h"
#include "tests/ui/ProxyPageDriver.h"
#include "tests/ui/SettingsDriver.h"
#include "tests/ui/StoredSheetTest.h"
#include "tests/ui/WizardDriver.h"
#include "WaylineDll/Host.h"
#include "WaylineDll/SetupWizard/WizardControls.h"

namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

constexpr uint32_t kTravel = 2003;
constexpr wchar_t kOfficeName[] = L"Z\u00fcrich Office";

constexpr size_t kUrlRow = 0;
constexpr size_t kProxyRow = 1;
constexpr size_t kExceptionsRow = 2;

constexpr std::array kRadios = {IDC_PROXY_AUTOMATIC_RADIO, IDC_PROXY_NOT_UPDATED_RADIO, IDC_PROXY_MANUAL_RADIO};

// What a row of a profile without settings of its own is, and becomes.
constexpr char kWorkRow[] = "Profiles LinkProfile=1 Name=Work ProfileId=2001 UserId=a.sample";

class ProxyPage : public StoredSheetTest {
 protected:
  Profile& ProfileOf(uint32_t id) { return *context.profiles.at(id); }

  // Makes a loaded profile override the defaults with these modes.
  void Override(uint32_t id, const ProxyModes& modes) {
    ProfileOf(id).SetDefaultProxy(false);
    SetModes(ProfileOf(id), modes);
  }

  void Show() {
    Open().SelectTab(L"Proxy");
    page.emplace(*sheet);
  }

  void ShowProfile(uint32_t id) {
    Load(id);
    Show();
  }

  std::vector<std::wstring> RowAt(size_t row) const { return page->Rows().at(row); }

  void ExpectConfigOf(uint32_t id, const wchar_t* url, const wchar_t* proxies, const wchar_t* exceptions) {
    const std::string select = " FROM ConfigSettings WHERE Automatic = 0 AND ProfileId = " + std::to_string(id);
    EXPECT_EQ(StoredValue(file, "SELECT AutoProxyUrl" + select), ToUtf8(url));
    EXPECT_EQ(StoredValue(file, "SELECT ManualProxy" + select), ToUtf8(proxies));
    EXPECT_EQ(StoredValue(file, "SELECT ProxyExceptions" + select), ToUtf8(exceptions));
  }

  // The rows that saving has added and taken away.
  std::multiset<std::string> Added() const { return Without(AllRows(file), before); }
  std::multiset<std::string> Taken() const { return Without(before, AllRows(file)); }

  std::multiset<std::string> before = AllRows(file);
  std::optional<ProxyPageDriver> page;
};

}  // namespace

// What is shown

TEST_F(ProxyPage, ListsThreeSettingsWithTheirModesAndValues) {
  ShowProfile(kSampleOffice);
  EXPECT_THAT(ReportColumns(page->List()), ElementsAre(L"Type", L"Setting", L"Value"));
  EXPECT_THAT(page->Rows(),
              ElementsAre(ElementsAre(L"Auto-proxy URL", L"Not updated", L""),
                          ElementsAre(L"Manual proxy", L"Manual", L"proxy1.example.net:3128;proxy2.example.net:3128"),
                          ElementsAre(L"Proxy Exceptions", L"Manual", L"intranet.example.net;192.0.2.0")));
  EXPECT_EQ(page->SelectedRow(), 0);
  sheet->Pick(IDC_PROFILE_COMBO, L"Work");
  EXPECT_THAT(page->Rows(),
              ElementsAre(ElementsAre(L"Auto-proxy URL", L"Automatically", L"http://wpad.example.com/wpad.dat"),
                          ElementsAre(L"Manual proxy", L"Automatically", L"proxy.example.com:8080"),
                          ElementsAre(L"Proxy Exceptions", L"Automatically", L"Leave")));
}

TEST_F(ProxyPage, SharesTheListsWidthAmongItsColumns) {
  ShowProfile(kSampleWork);
  RECT area{};
  GetClientRect(page->List(), &area);
  const int quarter = (area.right - 4) / 4;
  const HWND header = ListView_GetHeader(page->List());
  for (const auto& [column, width] : {std::pair{0, quarter}, std::pair{1, quarter}, std::pair{2, 2 * quarter}}) {
    EXPECT_EQ(ListView_GetColumnWidth(page->List(), column), width);
    HDITEMW item{};
    item.mask = HDI_WIDTH;
    Header_GetItem(header, column, &item);
    EXPECT_EQ(item.cxy, width);
  }
  EXPECT_EQ(GetWindowLongW(page->List(), GWL_STYLE) & WS_HSCROLL, 0) << "all columns are seen";
  EXPECT_NE(ListView_GetExtendedListViewStyle(page->List()) & LVS_EX_FULLROWSELECT, 0u);
}

TEST_F(ProxyPage, ARowThatIsNotUpdatedHasNoValue) {
  Override(kSampleWork, {L'n', L'n', L'n'});
  Show();
  for (const auto& row : page->Rows()) {
    EXPECT_EQ(row[1], L"Not updated");
    EXPECT_EQ(row[2], L"");
  }
}

TEST_F(ProxyPage, AManualExceptionListThatSaysLeaveShowsLeave) {
  RunSql(file, "UPDATE ConfigSettings SET ProxyExceptions = 'LEAVE' WHERE ProfileId = 2004 AND Automatic = 0");
  ShowProfile(kSampleOffice);
  EXPECT_EQ(RowAt(kExceptionsRow)[2], L"Leave");
}

TEST_F(ProxyPage, AnUnknownModeIsCalledSoAndLeavesTheRadioButtonsAsTheyAre) {
  Override(kSampleWork, {L'n', L'x', L'M'});
  Show();
  EXPECT_EQ(RowAt(kProxyRow)[1], L"unknown");
  EXPECT_EQ(RowAt(kProxyRow)[2], L"");
  EXPECT_EQ(RowAt(kExceptionsRow)[1], L"unknown");
  for (const size_t row : {kProxyRow, kExceptionsRow}) {
    page->Select(row);
    EXPECT_EQ(page->CheckedMode(), IDC_PROXY_NOT_UPDATED_RADIO) << "of the first row";
    EXPECT_FALSE(sheet->IsEnabled(IDC_PROXY_SETTINGS));
  }
  sheet->Click(IDC_PROXY_MANUAL_RADIO);
  EXPECT_EQ(ModesOf(ProfileOf(kSampleWork)), (ProxyModes{L'n', L'x', L'm'}));
}

TEST_F(ProxyPage, TheRadioButtonsShowTheModeOfTheSelectedRow) {
  Override(kSampleWork, {L'm', L'n', L'a'});
  Show();
  EXPECT_EQ(page->CheckedMode(), IDC_PROXY_MANUAL_RADIO);
  page->Select(kProxyRow);
  EXPECT_EQ(page->CheckedMode(), IDC_PROXY_NOT_UPDATED_RADIO);
  page->Select(kExceptionsRow);
  EXPECT_EQ(page->CheckedMode(), IDC_PROXY_AUTOMATIC_RADIO);
  sheet->Pick(IDC_PROFILE_COMBO, kOfficeName);
  EXPECT_EQ(page->CheckedMode(), IDC_PROXY_MANUAL_RADIO) << "the row stays selected";
  EXPECT_EQ(page->SelectedRow(), 2);
}

TEST_F(ProxyPage, TheUrlRowHasAFieldAndTheOthersAButton) {
  ShowProfile(kSampleOffice);
  const auto expectField = [this](bool field) {
    EXPECT_EQ(page->IsShown(IDC_PROXY_URL_LABEL), field);
    EXPECT_EQ(page->IsShown(IDC_PROXY_URL), field);
    EXPECT_EQ(page->IsShown(IDC_PROXY_SETTINGS), !field);
  };
  expectField(true);
  page->Select(kProxyRow);
  expectField(false);
  page->Select(kExceptionsRow);
  expectField(false);
  page->Select(kUrlRow);
  expectField(true);
}

TEST_F(ProxyPage, ValuesCanBeEnteredOnlyInTheManualMode) {
  Override(kSampleWork, {L'a', L'a', L'a'});
  Show();
  for (const size_t row : {kUrlRow, kProxyRow, kExceptionsRow}) {
    page->Select(row);
    const int entry = row == kUrlRow ? IDC_PROXY_URL : IDC_PROXY_SETTINGS;
    EXPECT_FALSE(sheet->IsEnabled(entry)) << row;
    sheet->Click(IDC_PROXY_MANUAL_RADIO);
    EXPECT_TRUE(sheet->IsEnabled(entry)) << row;
    EXPECT_TRUE(sheet->IsEnabled(IDC_PROXY_URL_LABEL)) << row;
    sheet->Click(IDC_PROXY_NOT_UPDATED_RADIO);
    EXPECT_FALSE(sheet->IsEnabled(entry)) << row;
    sheet->Click(IDC_PROXY_AUTOMATIC_RADIO);
    EXPECT_FALSE(sheet->IsEnabled(entry)) << row;
  }
}

TEST_F(ProxyPage, TheFieldShowsTheUrlThatItsModeTakes) {
  Override(kSampleOffice, {L'm', L'm', L'm'});
  context.currentProfile = context.profiles.at(kSampleOffice);
  Show();
  EXPECT_EQ(sheet->Text(IDC_PROXY_URL), L"http://proxy.example.net/office.pac");
  sheet->Click(IDC_PROXY_AUTOMATIC_RADIO);
  EXPECT_EQ(sheet->Text(IDC_PROXY_URL), L"leave") << "only the list says it in words";
  EXPECT_EQ(RowAt(kUrlRow)[2], L"Leave");
  sheet->Click(IDC_PROXY_NOT_UPDATED_RADIO);
  EXPECT_EQ(sheet->Text(IDC_PROXY_URL), L"leave") << "stays as it is";
  sheet->Click(IDC_PROXY_MANUAL_RADIO);
  EXPECT_EQ(sheet->Text(IDC_PROXY_URL), L"http://proxy.example.net/office.pac");
}

// Overriding

TEST_F(ProxyPage, TheOverrideBoxGovernsWhatCanBeChangedAndNothingElse) {
  ShowProfile(kSampleWork);
  const auto expectEnabled = [this](bool enabled) {
    EXPECT_EQ(sheet->IsChecked(IDC_OVERRIDE_CHECK), enabled);
    for (const int id : {IDC_PROXY_LIST, IDC_PROXY_AUTOMATIC_RADIO, IDC_PROXY_NOT_UPDATED_RADIO, IDC_PROXY_MANUAL_RADIO,
                         IDC_PROXY_URL_LABEL, IDC_PROXY_SETTINGS}) {
      EXPECT_EQ(sheet->IsEnabled(id), enabled) << id;
    }
    for (const int id : {IDC_PROFILE_COMBO, IDC_OVERRIDE_CHECK, IDC_PROXY_EXPLANATION, IDC_PROXY_SETTING_GROUP}) {
      EXPECT_TRUE(sheet->IsEnabled(id)) << id;
    }
    EXPECT_FALSE(sheet->IsEnabled(IDC_PROXY_URL)) << "the mode is not manual";
  };
  expectEnabled(false);
  sheet->Click(IDC_OVERRIDE_CHECK);
  expectEnabled(true);
  EXPECT_FALSE(ProfileOf(kSampleWork).GetDefaultProxy());
  EXPECT_EQ(ProfileOf(kSampleWork).GetState(), ChangeState::Changed);
  sheet->Click(IDC_OVERRIDE_CHECK);
  expectEnabled(false);
  EXPECT_TRUE(ProfileOf(kSampleWork).GetDefaultProxy());
}

TEST_F(ProxyPage, ManualValuesCannotBeEnteredWhileTheDefaultsAreFollowed) {
  SetModes(ProfileOf(kSampleWork), {L'm', L'm', L'm'});
  Override(kSampleOffice, {L'm', L'm', L'm'});
  context.currentProfile = context.profiles.at(kSampleOffice);
  Show();
  sheet->Pick(IDC_PROFILE_COMBO, L"Work");
  EXPECT_FALSE(sheet->IsEnabled(IDC_PROXY_URL));
  sheet->Pick(IDC_PROFILE_COMBO, kOfficeName);
  page->Select(kProxyRow);
  EXPECT_TRUE(sheet->IsEnabled(IDC_PROXY_SETTINGS));
  sheet->Pick(IDC_PROFILE_COMBO, L"Work");
  EXPECT_EQ(page->CheckedMode(), IDC_PROXY_MANUAL_RADIO);
  for (const int id : kRadios) EXPECT_FALSE(sheet->IsEnabled(id));
  EXPECT_FALSE(sheet->IsEnabled(IDC_PROXY_SETTINGS));
}

TEST_F(ProxyPage, FollowingTheDefaultsAgainBringsBackTheModesOfTheFirstLook) {
  ShowProfile(kSampleOffice);
  for (const size_t row : {kUrlRow, kProxyRow, kExceptionsRow}) {
    page->Select(row);
    sheet->Click(IDC_PROXY_AUTOMATIC_RADIO);
  }
  sheet->SelectTab(L"General");
  sheet->SelectTab(L"Proxy");
  EXPECT_EQ(ModesOf(ProfileOf(kSampleOffice)), (ProxyModes{L'a', L'a', L'a'}));
  sheet->Click(IDC_OVERRIDE_CHECK);
  EXPECT_EQ(ModesOf(ProfileOf(kSampleOffice)), (ProxyModes{L'n', L'm', L'm'}));
  EXPECT_EQ(RowAt(kUrlRow)[1], L"Not updated");
  EXPECT_EQ(RowAt(kProxyRow)[1], L"Manual");
  for (const int id : kRadios) EXPECT_FALSE(sheet->IsEnabled(id));
  sheet->Click(IDC_OVERRIDE_CHECK);
  EXPECT_EQ(RowAt(kExceptionsRow)[1], L"Manual") << "what was chosen before is gone";
}

TEST_F(ProxyPage, EachProfileGoesBackToItsOwnModes) {
  ShowProfile(kSampleOffice);
  SetModes(ProfileOf(kTravel), {L'n', L'a', L'm'});
  sheet->Pick(IDC_PROFILE_COMBO, L"Travel");
  EXPECT_EQ(ModesOf(ProfileOf(kTravel)), (ProxyModes{L'n', L'a', L'm'})) << "not those of the first profile";
  sheet->Click(IDC_OVERRIDE_CHECK);
  sheet->Click(IDC_PROXY_MANUAL_RADIO);
  sheet->Pick(IDC_PROFILE_COMBO, L"Work");
  EXPECT_EQ(ModesOf(ProfileOf(kSampleWork)), (ProxyModes{L'a', L'a', L'a'}));
  sheet->Pick(IDC_PROFILE_COMBO, L"Travel");
  EXPECT_EQ(ModesOf(ProfileOf(kTravel)), (ProxyModes{L'm', L'a', L'm'}));
  sheet->Click(IDC_OVERRIDE_CHECK);
  EXPECT_EQ(ModesOf(ProfileOf(kTravel)), (ProxyModes{L'n', L'a', L'm'}));
  sheet->Pick(IDC_PROFILE_COMBO, kOfficeName);
  EXPECT_EQ(ModesOf(ProfileOf(kSampleOffice)), (ProxyModes{L'n', L'm', L'm'}));
}

// Modes

TEST_F(ProxyPage, AModeIsStoredForTheSelectedRowAtOnce) {
  Override(kSampleWork, {L'a', L'a', L'a'});
  Show();
  sheet->Click(IDC_PROXY_NOT_UPDATED_RADIO);
  EXPECT_EQ(ModesOf(ProfileOf(kSampleWork)), (ProxyModes{L'n', L'a', L'a'}));
  EXPECT_EQ(ProfileOf(kSampleWork).GetState(), ChangeState::Changed);
  page->Select(kProxyRow);
  sheet->Click(IDC_PROXY_MANUAL_RADIO);
  page->Select(kExceptionsRow);
  sheet->Click(IDC_PROXY_NOT_UPDATED_RADIO);
  EXPECT_EQ(ModesOf(ProfileOf(kSampleWork)), (ProxyModes{L'n', L'm', L'n'}));
  sheet->Click(IDC_PROXY_AUTOMATIC_RADIO);
  EXPECT_EQ(ModesOf(ProfileOf(kSampleWork)), (ProxyModes{L'n', L'm', L'a'}));
  EXPECT_EQ(RowAt(kProxyRow)[1], L"Manual");
}

TEST_F(ProxyPage, ModesAreSavedWithAllThatTheProfileMakesItsOwn) {
  ShowProfile(kSampleWork);
  sheet->Click(IDC_OVERRIDE_CHECK);
  sheet->Click(IDC_PROXY_NOT_UPDATED_RADIO);
  SaveWithOk();
  EXPECT_THAT(Taken(), ElementsAre(kWorkRow));
  EXPECT_THAT(Added(), ElementsAre("Profiles AutoProxySetting=n DefaultProxy=0 LinkProfile=1 ManualProxySetting=a "
                                   "Name=Work ProfileId=2001 ProxyExceptionsSetting=a UserId=a.sample"));
}

// The URL

TEST_F(ProxyPage, LeavingThePageOnTheUrlRowStoresTheUrl) {
  ShowProfile(kSampleWork);
  sheet->Click(IDC_OVERRIDE_CHECK);
  sheet->Click(IDC_PROXY_MANUAL_RADIO);
  page->TypeUrl(L"http://one.example.com/p.pac");
  sheet->SelectTab(L"General");
  sheet->SelectTab(L"Proxy");
  EXPECT_EQ(RowAt(kUrlRow)[2], L"http://one.example.com/p.pac");
  EXPECT_EQ(sheet->Text(IDC_PROXY_URL), L"http://one.example.com/p.pac");
  SaveWithOk();
  EXPECT_EQ(StoredValue(file, "SELECT AutoProxySetting FROM Profiles WHERE ProfileId = 2001"), "m");
  ExpectConfigOf(kSampleWork, L"http://one.example.com/p.pac", L"", L"");
}

TEST_F(ProxyPage, OkOnTheUrlRowStoresTheUrlOfAProfileThatNeverHadAConfiguration) {
  ShowProfile(kTravel);
  sheet->Click(IDC_OVERRIDE_CHECK);
  sheet->Click(IDC_PROXY_MANUAL_RADIO);
  page->TypeUrl(L"http://p/\u4f60\u597d");
  SaveWithOk();
  EXPECT_THAT(Added(), testing::Contains("ConfigSettings AutoProxyUrl=http://p/\xe4\xbd\xa0\xe5\xa5\xbd Automatic=0 "
                                         "Dns1= Dns2= DomainName= ManualProxy= ProfileId=2003 ProxyExceptions= "
                                         "SearchList= Wins1= Wins2="));
  EXPECT_EQ(Added().size(), 2u) << "and the profile";
  EXPECT_EQ(Taken().size(), 1u);
}

TEST_F(ProxyPage, LeavingThePageOnAnotherRowForgetsTheUrl) {
  Override(kSampleOffice, {L'm', L'm', L'm'});
  context.currentProfile = context.profiles.at(kSampleOffice);
  Show();
  page->TypeUrl(L"http://forgotten.example.com");
  page->Select(kProxyRow);
  sheet->SelectTab(L"General");
  sheet->SelectTab(L"Proxy");
  page->Select(kUrlRow);
  EXPECT_EQ(sheet->Text(IDC_PROXY_URL), L"http://proxy.example.net/office.pac");
}

TEST_F(ProxyPage, AUrlIsForgottenWhereAModeIsChosenOrAnotherProfile) {
  Override(kSampleOffice, {L'm', L'm', L'm'});
  context.currentProfile = context.profiles.at(kSampleOffice);
  Show();
  for (const int mode : {IDC_PROXY_MANUAL_RADIO, IDC_PROXY_NOT_UPDATED_RADIO}) {
    page->TypeUrl(L"http://forgotten.example.com");
    sheet->Click(mode);
    sheet->Click(IDC_PROXY_MANUAL_RADIO);
    EXPECT_EQ(sheet->Text(IDC_PROXY_URL), L"http://proxy.example.net/office.pac");
  }
  page->TypeUrl(L"http://forgotten.example.com");
  sheet->Pick(IDC_PROFILE_COMBO, L"Work");
  EXPECT_EQ(sheet->SelectedValue(IDC_PROFILE_COMBO), kSampleWork);
  sheet->Pick(IDC_PROFILE_COMBO, kOfficeName);
  EXPECT_EQ(sheet->Text(IDC_PROXY_URL), L"http://proxy.example.net/office.pac");
  EXPECT_EQ(context.manualConfigs.size(), 0u) << "the caller's context is another";
}

TEST_F(ProxyPage, TheTypedUrlSurvivesEveryMoveOfTheFocus) {
  Override(kSampleOffice, {L'm', L'm', L'm'});
  context.currentProfile = context.profiles.at(kSampleOffice);
  Show();
  page->TypeUrl(L"http://typed.example.com");
  for (const int id : {IDC_PROXY_LIST, IDC_OVERRIDE_CHECK, IDC_PROFILE_COMBO, IDC_PROXY_MANUAL_RADIO, IDC_PROXY_URL}) {
    sheet->Focus(id);
    EXPECT_EQ(sheet->Text(IDC_PROXY_URL), L"http://typed.example.com") << id;
  }
}

TEST_F(ProxyPage, AUrlIsTakenUpTo511Characters) {
  // An emoji takes two of them, and is not cut in two.
  const std::wstring emoji = L"\xd83d\xde00";
  for (const auto& [typed, taken] :
       {std::pair{std::wstring(511, L'u'), std::wstring(511, L'u')},
        std::pair{std::wstring(512, L'u'), std::wstring(511, L'u')},
        std::pair{std::wstring(510, L'\u4f60') + emoji, std::wstring(510, L'\u4f60')},
        std::pair{std::wstring(509, L'\u05d0') + emoji + L"x", std::wstring(509, L'\u05d0') + emoji}}) {
    Load(kSampleOffice);
    Override(kSampleOffice, {L'm', L'm', L'm'});
    Show();
    // As pasted; typing so much takes long.
    SendMessageW(sheet->Control(IDC_PROXY_URL), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(typed.c_str()));
    sheet->SelectTab(L"General");
    sheet->SelectTab(L"Proxy");
    EXPECT_EQ(sheet->Text(IDC_PROXY_URL), taken);
    SaveWithOk();
    EXPECT_EQ(StoredValue(file, "SELECT AutoProxyUrl FROM ConfigSettings WHERE ProfileId = 2004 AND Automatic = 0"),
              ToUtf8(taken));
  }
}

TEST_F(ProxyPage, AnEmptyUrlTakesThePlaceOfTheStoredOne) {
  Override(kSampleOffice, {L'm', L'm', L'm'});
  context.currentProfile = context.profiles.at(kSampleOffice);
  Show();
  page->TypeUrl(L"\b");
  SaveWithOk();
  ExpectConfigOf(kSampleOffice, L"", L"proxy1.example.net:3128;proxy2.example.net:3128",
                 L"intranet.example.net;192.0.2.0");
}

// Saving

TEST_F(ProxyPage, LookingOnlyWritesNothing) {
  RunSql(file, "UPDATE Profiles SET AutoProxySetting = 'm' WHERE ProfileId IN (1, 2004)");
  RunSql(file, "UPDATE ConfigSettings SET AutoProxyUrl = '" + std::string(600, 'u') + "', ManualProxy = 'a:b:c;;' " +
                   "WHERE ProfileId = 2004 AND Automatic = 0");
  before = AllRows(file);
  ShowProfile(kSampleWork);
  for (const wchar_t* profile : {L"Work 2", L"Travel", kOfficeName, L"Visitor", L"Work", kOfficeName}) {
    sheet->Pick(IDC_PROFILE_COMBO, profile);
    for (const size_t row : {kUrlRow, kProxyRow, kExceptionsRow, kUrlRow}) {
      page->Select(row);
      sheet->SelectTab(L"General");
      sheet->SelectTab(L"Proxy");
    }
    page->Select(kProxyRow);
    if (!sheet->IsEnabled(IDC_PROXY_SETTINGS)) continue;
    SettingsDriver(*sheet).Close(IDCANCEL);
    page->Select(kUrlRow);
  }
  EXPECT_EQ(ModesOf(ProfileOf(kSampleWork)), (ProxyModes{L'm', L'a', L'a'}));
  SaveWithOk();
  EXPECT_EQ(AllRows(file), before);
}

TEST_F(ProxyPage, CancelSavesNothing) {
  ShowProfile(kSampleOffice);
  sheet->Click(IDC_PROXY_MANUAL_RADIO);
  page->TypeUrl(L"http://cancelled.example.com");
  sheet->SelectTab(L"General");
  sheet->SelectTab(L"Proxy");
  page->Select(kProxyRow);
  const SettingsDriver dialog(*sheet);
  dialog.Add(L"cancelled", L"1");
  dialog.Close(IDOK);
  EXPECT_EQ(RowAt(kProxyRow)[2], L"proxy1.example.net:3128;proxy2.example.net:3128;cancelled:1");
  sheet->PressCancel();
  EXPECT_EQ(sheet->Result(), kSheetCancelled);
  DiscardChanges();
  EXPECT_EQ(AllRows(file), before);
}

TEST_F(ProxyPage, ListsOfSeveralProfilesAreSavedEachWithItsOwn) {
  ShowProfile(kSampleWork);
  for (const auto& [profile, row, address] :
       {std::tuple{L"Work", kProxyRow, L"work"}, std::tuple{L"Travel", kExceptionsRow, L"travel"},
        std::tuple{L"Visitor", kProxyRow, L"visitor"}}) {
    sheet->Pick(IDC_PROFILE_COMBO, profile);
    sheet->Click(IDC_OVERRIDE_CHECK);
    page->Select(row);
    sheet->Click(IDC_PROXY_MANUAL_RADIO);
    const SettingsDriver dialog(*sheet);
    dialog.Add(address);
    dialog.Close(IDOK);
    EXPECT_EQ(RowAt(row)[2], address);
  }
  SaveWithOk();
  ExpectConfigOf(kSampleWork, L"", L"work", L"");
  ExpectConfigOf(kTravel, L"", L"", L"travel");
  ExpectConfigOf(kSampleVisitor, L"", L"visitor", L"");
  EXPECT_EQ(StoredValue(file, "SELECT count(*) FROM ConfigSettings"), "8");
}

TEST_F(ProxyPage, WhatTheServersWizardAndThePageChangeIsSavedTogether) {
  Load(kSampleWork);
  Open();
  const auto enterDns = [this](int control, int mode, const wchar_t* address) {
    sheet->SelectTab(L"General");
    sheet->Click(IDC_GENERAL_CONFIGURE_SERVERS);
    WizardDriver wizard(GetWindowThreadProcessId(sheet->Sheet(), nullptr));
    wizard.Pick(mode, L"Use this:");
    wizard.Type(control, address);
    wizard.PressNext();
    wizard.PressFinish();
    ASSERT_TRUE(WaitUntil([&] { return !wizard.IsOpen() && IsWindowEnabled(sheet->Sheet()) != FALSE; }));
    sheet->SelectTab(L"Proxy");
    page.emplace(*sheet);
  };
  enterDns(IDC_WIZARD_DNS1, IDC_WIZARD_DNS1_MODE, L"192.0.2.53");
  sheet->Click(IDC_OVERRIDE_CHECK);
  sheet->Click(IDC_PROXY_MANUAL_RADIO);
  page->TypeUrl(L"http://both.example.com");
  enterDns(IDC_WIZARD_DNS2, IDC_WIZARD_DNS2_MODE, L"192.0.2.54");
  EXPECT_EQ(sheet->Text(IDC_PROXY_URL), L"http://both.example.com");
  page->Select(kProxyRow);
  sheet->Click(IDC_PROXY_MANUAL_RADIO);
  const SettingsDriver dialog(*sheet);
  dialog.Add(L"proxy", L"80");
  dialog.Close(IDOK);
  SaveWithOk();
  EXPECT_THAT(Taken(), ElementsAre(kWorkRow));
  EXPECT_THAT(Added(),
              UnorderedElementsAre("ConfigSettings AutoProxyUrl=http://both.example.com Automatic=0 Dns1=192.0.2.53 "
                                   "Dns2=192.0.2.54 DomainName= ManualProxy=proxy:80 ProfileId=2001 "
                                   "ProxyExceptions= SearchList= Wins1= Wins2=",
                                   "Profiles AutoProxySetting=m DNS1Setting=m DNS2Setting=m DefaultProxy=0 "
                                   "LinkProfile=1 ManualProxySetting=m Name=Work ProfileId=2001 "
                                   "ProxyExceptionsSetting=a UserId=a.sample"));
}

// Configurations that are not there

namespace {

// Everything that can be done on the page, and in which nothing must be missed.
void UseEverything(SheetDriver& sheet, const ProxyPageDriver& page) {
  for (const wchar_t* profile : {L"Work", kOfficeName}) {
    sheet.Pick(IDC_PROFILE_COMBO, profile);
    if (!sheet.IsChecked(IDC_OVERRIDE_CHECK)) sheet.Click(IDC_OVERRIDE_CHECK);
    for (const size_t row : {kUrlRow, kProxyRow, kExceptionsRow}) {
      page.Select(row);
      for (const int mode : kRadios) {
        sheet.Click(mode);
        EXPECT_EQ(page.Rows()[row][2], L"") << row;
      }
      if (row != kUrlRow) {
        sheet.Click(IDC_PROXY_SETTINGS);
        EXPECT_EQ(sheet.MessageBoxWindow(), nullptr) << "no dialog for a list that is not there";
      } else {
        EXPECT_EQ(sheet.Text(IDC_PROXY_URL), L"");
        page.TypeUrl(L"http://nowhere.example.com");
      }
      sheet.SelectTab(L"General");
      sheet.SelectTab(L"Proxy");
    }
    page.Select(kUrlRow);
    EXPECT_EQ(sheet.Text(IDC_PROXY_URL), L"") << "not that of another profile";
    sheet.Click(IDC_OVERRIDE_CHECK);
  }
}

}  // namespace

TEST_F(ProxyPage, WorksWithoutConfigurations) {
  for (ConfigTable* configs : {&context.manualConfigs, &context.autoConfigs}) {
    for (const auto& [id, profile] : context.profiles) (*configs)[id] = nullptr;
  }
  Show();
  UseEverything(*sheet, *page);
  SaveWithOk();
  EXPECT_EQ(StoredValue(file, "SELECT count(*) FROM ConfigSettings"), "5");
}

TEST_F(ProxyPage, WorksWhileAnotherProgramKeepsTheDatabaseToItself) {
  {
    const ConnectionHandle other = LockDatabase(file, "BEGIN EXCLUSIVE");
    Show();
    UseEverything(*sheet, *page);
  }
  SaveWithOk();
  EXPECT_EQ(StoredValue(file, "SELECT count(*) FROM ConfigSettings"), "5");
}

TEST_F(ProxyPage, WorksOverADamagedDatabase) {
  std::fstream(std::filesystem::path(file), std::ios::in | std::ios::out | std::ios::binary) << std::string(65536, 'x');
  Show();
  UseEverything(*sheet, *page);
  sheet->PressCancel();
  EXPECT_EQ(sheet->Result(), kSheetCancelled);
}

TEST_F(ProxyPage, WorksWithoutACurrentProfile) {
  context.currentProfile = nullptr;
  Show();
  for (const auto& row : page->Rows()) {
    EXPECT_EQ(row[1], L"");
    EXPECT_EQ(row[2], L"");
  }
  EXPECT_EQ(page->CheckedMode(), 0);
  for (const int id : kRadios) EXPECT_FALSE(sheet->IsEnabled(id));
  sheet->Click(IDC_OVERRIDE_CHECK);
  EXPECT_FALSE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  // As by a program: nobody can click or select them.
  for (const int id : kRadios) SendMessageW(sheet->Page(), WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), 0);
  SendMessageW(sheet->Page(), WM_COMMAND, MAKEWPARAM(IDC_PROXY_SETTINGS, BN_CLICKED), 0);
  for (const int row : {1, 2, 0}) ListView_SetItemState(page->List(), row, LVIS_SELECTED, LVIS_SELECTED);
  sheet->SelectTab(L"General");
  sheet->SelectTab(L"Proxy");
  sheet->Pick(IDC_PROFILE_COMBO, kOfficeName);
  EXPECT_EQ(RowAt(kProxyRow)[1], L"Manual");
  SaveWithOk();
  EXPECT_EQ(AllRows(file), before);
}

// Help and keyboard

TEST_F(ProxyPage, TheHelpKeyOpensThePagesTopic) {
  ShowProfile(kSampleWork);
  const BrowserStandIn browser;
  sheet->Focus(IDC_PROFILE_COMBO);
  EXPECT_TRUE(sheet->PressKeyUntil([&browser] { return browser.HasOpened(); }, VK_F1));
  EXPECT_EQ(browser.OpenedPage(), HelpPage(L"1050.html"));
}

TEST_F(ProxyPage, TakesTheQuestionMarkOutOfTheTitleBar) {
  Open();
  const LONG_PTR style = GetWindowLongPtrW(sheet->Sheet(), GWL_EXSTYLE);
  SetWindowLongPtrW(sheet->Sheet(), GWL_EXSTYLE, style | WS_EX_CONTEXTHELP);
  sheet->SelectTab(L"Proxy");
  EXPECT_EQ(GetWindowLongPtrW(sheet->Sheet(), GWL_EXSTYLE) & WS_EX_CONTEXTHELP, 0);
}

TEST_F(ProxyPage, AKeyboardAloneReachesEverything) {
  Override(kSampleOffice, {L'm', L'm', L'm'});
  context.currentProfile = context.profiles.at(kSampleOffice);
  Show();
  const auto tab = [this] {
    const int from = sheet->FocusedControl();
    EXPECT_TRUE(sheet->PressKeyUntil([&] { return sheet->FocusedControl() != from; }, VK_TAB));
    return sheet->FocusedControl();
  };
  sheet->Focus(IDC_PROFILE_COMBO);
  EXPECT_EQ(tab(), IDC_OVERRIDE_CHECK);
  EXPECT_EQ(tab(), IDC_PROXY_LIST);
  EXPECT_EQ(tab(), IDC_PROXY_MANUAL_RADIO) << "the one that is checked";
  EXPECT_EQ(tab(), IDC_PROXY_URL);
  sheet->Focus(IDC_PROXY_LIST);
  EXPECT_TRUE(sheet->PressKeyUntil([&] { return page->SelectedRow() == 1; }, VK_DOWN));
  EXPECT_EQ(tab(), IDC_PROXY_MANUAL_RADIO);
  EXPECT_EQ(tab(), IDC_PROXY_SETTINGS);
  EXPECT_TRUE(
      sheet->PressKeyUntil([&] { return ProfileOf(kSampleOffice).GetManualProxySetting() == L'n'; }, 'D', {VK_MENU}));
  EXPECT_TRUE(
      sheet->PressKeyUntil([&] { return ProfileOf(kSampleOffice).GetManualProxySetting() == L'm'; }, 'M', {VK_MENU}));
  EXPECT_TRUE(sheet->PressKeyUntil([&] { return sheet->MessageBoxWindow() != nullptr; }, 'S', {VK_MENU}));
}
