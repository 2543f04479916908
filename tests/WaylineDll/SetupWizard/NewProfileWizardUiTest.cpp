// The wizard for a new profile.

#include <gmock/gmock.h>

#include <algorithm>

#include "Database/Profiles/Preference.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/OtherConnection.h"
#include "tests/WaylineDll/SetupWizard/WizardTest.h"
#include "WaylineDll/AutoStart.h"
#include "WaylineDll/Host.h"
#include "WaylineDll/Preferences.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr uint32_t kField = 100;
constexpr uint32_t kZurich = 2004;

class NewProfileWizard : public WizardTest {
 protected:
  NewProfileWizard() { MakeNewProfile(); }

  void Open() {
    WizardTest::Open(WizardId::NewProfile);
    ASSERT_EQ(wizard->CurrentPage(), WizardPage::Name);
  }

  void OpenAt(WizardPage page) {
    Open();
    wizard->Type(IDC_WIZARD_NAME, L"Home");
    GoTo(page);
  }
};

}  // namespace

TEST_F(NewProfileWizard, MakesAProfileThatFollowsTheDefaults) {
  OpenAt(WizardPage::Defaults);
  EXPECT_EQ(wizard->Title(), L"New Login Profile");
  EXPECT_THAT(wizard->Items(IDC_WIZARD_DEFAULTS), ElementsAre(L"Branch Offices", L"default custom", L"Field Service"));
  EXPECT_EQ(wizard->Selected(IDC_WIZARD_DEFAULTS), L"default custom");
  wizard->Pick(IDC_WIZARD_DEFAULTS, L"Field Service");
  wizard->PressNext();
  EXPECT_EQ(wizard->Text(IDC_WIZARD_ACCOUNT), L"Example Field");
  wizard->Type(IDC_WIZARD_USER_ID, L"b.sample");
  wizard->PressNext();
  EXPECT_EQ(wizard->Selected(IDC_WIZARD_SERVICE), L"Secure Tunnel");
  wizard->PressNext();
  ASSERT_EQ(wizard->CurrentPage(), WizardPage::ServerChoice);
  EXPECT_TRUE(wizard->IsChecked(IDC_WIZARD_DEFAULT_SERVERS));
  wizard->PressNext();
  ASSERT_EQ(wizard->CurrentPage(), WizardPage::Copy);
  EXPECT_EQ(wizard->Selected(IDC_WIZARD_COPY), L"(Do not copy)");
  wizard->PressNext();
  ASSERT_EQ(wizard->CurrentPage(), WizardPage::Summary);
  EXPECT_EQ(wizard->Text(IDC_WIZARD_SUMMARY),
            L"Name: Home\r\nFollows the defaults: Field Service\r\nAccount: Example Field\r\nUser ID: b.sample\r\n"
            L"Network service: Secure Tunnel\r\nServers: as in the defaults\r\n"
            L"Copies preferences and autostart entries of: no other login profile");
  wizard->PressFinish();
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_EQ(Columns().name, L"Home");
  EXPECT_EQ(Columns().linkProfile, kField);
  EXPECT_EQ(Columns().account, L"Example Field");
  EXPECT_EQ(Columns().userId, L"b.sample");
  EXPECT_EQ(Columns().linkService, 401);
  EXPECT_EQ(Columns().durationTime, 1800);
  EXPECT_GT(Columns().profileId, 2000U);
  EXPECT_FALSE(data.copySettings);
}

TEST_F(NewProfileWizard, SetsServersWhenTheUserWantsThat) {
  OpenAt(WizardPage::ServerChoice);
  wizard->Click(IDC_WIZARD_SET_SERVERS);
  wizard->PressNext();
  ASSERT_EQ(wizard->CurrentPage(), WizardPage::Servers);
  wizard->Pick(IDC_WIZARD_DNS1_MODE, L"Use this:");
  wizard->Type(IDC_WIZARD_DNS1, L"192.0.2.53");
  wizard->PressNext();
  ASSERT_EQ(wizard->CurrentPage(), WizardPage::Domains);
  GoTo(WizardPage::Summary);
  EXPECT_THAT(wizard->Text(IDC_WIZARD_SUMMARY), HasSubstr(L"DNS server 1: 192.0.2.53\r\nDNS server 2: automatic\r\n"));
  wizard->PressFinish();
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_EQ(Columns().dns1Setting, L'm');
  EXPECT_EQ(data.manualConfig->fields.dns1, L"192.0.2.53");
}

TEST_F(NewProfileWizard, ForgetsServersWhenTheUserDoesNotWantThemAfterAll) {
  OpenAt(WizardPage::ServerChoice);
  wizard->Click(IDC_WIZARD_SET_SERVERS);
  wizard->PressNext();
  wizard->Pick(IDC_WIZARD_DNS1_MODE, L"Use this:");
  wizard->Type(IDC_WIZARD_DNS1, L"wrong");
  wizard->PressBack();
  ASSERT_EQ(wizard->CurrentPage(), WizardPage::ServerChoice);
  wizard->Click(IDC_WIZARD_DEFAULT_SERVERS);
  GoTo(WizardPage::Summary);
  wizard->PressFinish();
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_EQ(Columns().dns1Setting, L'a');
  EXPECT_EQ(data.manualConfig->fields.dns1, L"");
}

TEST_F(NewProfileWizard, CopiesFromAnotherProfile) {
  OpenAt(WizardPage::Copy);
  EXPECT_THAT(wizard->Items(IDC_WIZARD_COPY),
              ElementsAre(L"(Do not copy)", L"Branch Offices", L"default custom", L"Field Service", L"Travel",
                          L"Visitor", L"Work", L"Work 2", L"Z\u00fcrich Office"));
  EXPECT_EQ(wizard->Text(IDC_WIZARD_COPIED), L"");
  wizard->Pick(IDC_WIZARD_COPY, L"Work");
  EXPECT_EQ(wizard->Text(IDC_WIZARD_COPIED),
            L"It follows the default preferences.\r\nIt follows the default autostart entries.\r\n"
            L"Autostart entries of its own: none\r\nPreferences of its own: none\r\n");
  wizard->Pick(IDC_WIZARD_COPY, L"Z\u00fcrich Office");
  EXPECT_THAT(wizard->Text(IDC_WIZARD_COPIED),
              testing::StartsWith(
                  L"It overrides the default preferences.\r\nIt overrides the default autostart entries.\r\n"
                  L"Autostart entries of its own:\r\n    Device check\r\n    Notes\r\n    Calculator\r\n    Goodbye\r\n"
                  L"Preferences of its own:\r\n    "));
  EXPECT_EQ(std::ranges::count(wizard->Text(IDC_WIZARD_COPIED), L'\n'), 2 + 1 + 4 + 1 + 27);
  wizard->Pick(IDC_WIZARD_COPY, L"Visitor");
  EXPECT_THAT(wizard->Text(IDC_WIZARD_COPIED), testing::EndsWith(L"Preferences of its own: none\r\n"))
      << "it shows those of its defaults";
  wizard->Pick(IDC_WIZARD_COPY, L"Z\u00fcrich Office");
  wizard->PressNext();
  EXPECT_THAT(wizard->Text(IDC_WIZARD_SUMMARY), HasSubstr(L"entries of: Z\u00fcrich Office"));
  wizard->PressFinish();
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_TRUE(data.copySettings);
  EXPECT_EQ(data.copySourceProfileId, kZurich);
  EXPECT_FALSE(Columns().defaultPreferences);
  EXPECT_FALSE(Columns().defaultAutostart);
  PreferenceTable preferences;
  EXPECT_TRUE(GetUserPreferences(Columns().profileId, preferences));
  EXPECT_EQ(preferences.size(), 27U);
  AutoStartTable items;
  EXPECT_TRUE(LoadUserAutoStart(Columns().profileId, items));
}

TEST_F(NewProfileWizard, SaysThatWhatToCopyCannotBeRead) {
  OpenAt(WizardPage::Copy);
  RunSql(folder.File(L"Wayline.db"), "DROP TABLE AutoStart");
  wizard->Pick(IDC_WIZARD_COPY, L"Work");
  EXPECT_EQ(wizard->Text(IDC_WIZARD_COPIED),
            L"What this login profile has cannot be read, so it cannot be copied now.\r\n");
}

TEST_F(NewProfileWizard, TellsThatCopyingFailedAndStaysOpen) {
  const ProfileColumns before = Columns();
  OpenAt(WizardPage::Copy);
  wizard->Pick(IDC_WIZARD_COPY, L"Z\u00fcrich Office");
  GoTo(WizardPage::Summary);
  CloseSettings();
  wizard->PressFinish();
  EXPECT_EQ(wizard->MessageBoxText(),
            L"The settings of \"Z\u00fcrich Office\" cannot be read, so they cannot be copied. Choose another login "
            L"profile to copy from, or none.");
  wizard->AnswerMessageBox();
  EXPECT_EQ(wizard->CurrentPage(), WizardPage::Summary);
  EXPECT_EQ(Columns().name, before.name);
  EXPECT_EQ(Columns().linkProfile, before.linkProfile);
  wizard->PressCancel();
  EXPECT_EQ(wizard->Result(), 0);
  EXPECT_FALSE(data.copySettings);
}

TEST_F(NewProfileWizard, ShowsTheValuesOfOtherDefaultsExceptWhereTheUserHasTyped) {
  OpenAt(WizardPage::UserId);
  EXPECT_EQ(wizard->Text(IDC_WIZARD_ACCOUNT), L"Example Company");
  wizard->Type(IDC_WIZARD_USER_ID, L"b.sample");
  wizard->PressNext();
  EXPECT_EQ(wizard->Selected(IDC_WIZARD_SERVICE), L"Standard Access");
  wizard->PressBack();
  wizard->PressBack();
  wizard->Pick(IDC_WIZARD_DEFAULTS, L"Field Service");
  wizard->PressNext();
  EXPECT_EQ(wizard->Text(IDC_WIZARD_ACCOUNT), L"Example Field");
  EXPECT_EQ(wizard->Text(IDC_WIZARD_USER_ID), L"b.sample");
  wizard->PressNext();
  EXPECT_EQ(wizard->Selected(IDC_WIZARD_SERVICE), L"Secure Tunnel");
  wizard->PressBack();
  wizard->PressBack();
  wizard->PressBack();
  EXPECT_EQ(wizard->Text(IDC_WIZARD_NAME), L"Home");
}

TEST_F(NewProfileWizard, RefusesANameThatCannotBe) {
  Open();
  wizard->PressNext();
  ExpectRefusal(IDC_WIZARD_NAME, L"Please enter a name for the login profile.");
  wizard->Type(IDC_WIZARD_NAME, L"   ");
  wizard->TryFocusButton(WizardDriver::kNext);
  ExpectRefusal(IDC_WIZARD_NAME, L"Please enter a name for the login profile.");
  wizard->Type(IDC_WIZARD_NAME, std::wstring(81, L'x'));
  wizard->PressNext();
  ExpectRefusal(IDC_WIZARD_NAME, L"The name of the login profile is too long. Please enter at most 80 characters.");
  wizard->Paste(IDC_WIZARD_NAME, L"My\tHome");
  wizard->PressNext();
  ExpectRefusal(IDC_WIZARD_NAME,
                L"Please enter a name for the login profile that has no tabs or other control characters in it.");
  wizard->Type(IDC_WIZARD_NAME, L"Z\u00dcRICH office");
  wizard->PressNext();
  ExpectRefusal(IDC_WIZARD_NAME,
                L"There is a login profile with the name \"Z\u00dcRICH office\" already. Please enter another name.");
  wizard->Type(IDC_WIZARD_NAME, L"retired line");
  wizard->PressNext();
  ExpectRefusal(IDC_WIZARD_NAME,
                L"A hidden login profile has the name \"retired line\" already. Please enter another name.");
  wizard->Paste(IDC_WIZARD_NAME, L"\r\nHome\r\n");
  wizard->PressNext();
  EXPECT_EQ(wizard->CurrentPage(), WizardPage::Defaults);
}

TEST_F(NewProfileWizard, TakesTheNameOfAProfileThatIsRemoved) {
  data.profiles.at(kZurich)->SetState(ChangeState::Removed);
  Open();
  wizard->Type(IDC_WIZARD_NAME, L"Z\u00fcrich Office");
  wizard->PressNext();
  EXPECT_EQ(wizard->CurrentPage(), WizardPage::Defaults);
}

TEST_F(NewProfileWizard, SkipsThePageOfTheDefaultsWhenThereAreNone) {
  std::erase_if(data.profiles, [](const auto& entry) { return entry.first <= 2000; });
  Open();
  wizard->Type(IDC_WIZARD_NAME, L"Home");
  wizard->PressNext();
  EXPECT_EQ(wizard->CurrentPage(), WizardPage::UserId);
  wizard->PressBack();
  EXPECT_EQ(wizard->CurrentPage(), WizardPage::Name);
}

TEST_F(NewProfileWizard, AsksForDefaultsWhenTheProfileFollowsNone) {
  data.profile->Columns().linkProfile = 0;
  OpenAt(WizardPage::Defaults);
  EXPECT_EQ(wizard->Selected(IDC_WIZARD_DEFAULTS), std::nullopt);
  wizard->PressNext();
  EXPECT_EQ(wizard->MessageBoxText(), L"Please choose the defaults that the login profile follows.");
}

TEST_F(NewProfileWizard, LeavesTheProfileAloneWhenItIsCancelledOnTheLastPage) {
  const ProfileColumns before = Columns();
  OpenAt(WizardPage::Summary);
  // The summary has the focus, and must not keep the key for itself.
  EXPECT_EQ(wizard->FocusedControl(), IDC_WIZARD_SUMMARY);
  EXPECT_TRUE(wizard->PressKeyUntil([&] { return !wizard->IsOpen(); }, VK_ESCAPE));
  EXPECT_EQ(wizard->Result(), 0);
  EXPECT_EQ(Columns().name, L"");
  EXPECT_EQ(Columns().linkProfile, before.linkProfile);
}

TEST_F(NewProfileWizard, CanBeDoneWithTheKeyboardAlone) {
  Open();
  EXPECT_TRUE(wizard->PressKeyUntil([&] { return wizard->Text(IDC_WIZARD_NAME) == L"x"; }, L'X'));
  for (const WizardPage page : PagesOf(WizardId::NewProfile, {.setsServers = false})) {
    if (page == WizardPage::Name) continue;
    EXPECT_TRUE(wizard->PressKeyUntil([&] { return wizard->CurrentPage() == page; }, VK_RETURN));
  }
  EXPECT_TRUE(wizard->PressKeyUntil([&] { return !wizard->IsOpen(); }, VK_RETURN));
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_EQ(Columns().name, L"x");
}

TEST_F(NewProfileWizard, TellsThatNoProfileCouldBeMade) {
  data.profile = nullptr;
  WizardTest::Open(WizardId::NewProfile);
  EXPECT_EQ(wizard->MessageBoxText(),
            L"A new login profile cannot be made now. No number is left for it, or the settings cannot be read.");
  wizard->AnswerMessageBox();
  EXPECT_EQ(wizard->Result(), 0);
}

TEST_F(NewProfileWizard, SavesTheProfileThatItMade) {
  OpenAt(WizardPage::Copy);
  wizard->Pick(IDC_WIZARD_COPY, L"Z\u00fcrich Office");
  GoTo(WizardPage::Summary);
  wizard->PressFinish();
  EXPECT_EQ(wizard->Result(), 1);
  data.profile->SetState(ChangeState::New);
  SettingsTables tables;
  const uint32_t id = Columns().profileId;
  tables.profiles = data.profiles;
  tables.profiles[id] = data.profile;
  SaveReport report;
  EXPECT_EQ(SaveSettings(tables, report), std::nullopt);
  EXPECT_THAT(report.lost, testing::IsEmpty());
  ProfileTable saved;
  EXPECT_EQ(LoadProfiles(saved), std::nullopt);
  ASSERT_TRUE(saved.contains(id));
  EXPECT_EQ(saved.at(id)->GetName(), L"Home");
  EXPECT_FALSE(saved.at(id)->GetDefaultAutostart());
  AutoStartTable items;
  EXPECT_TRUE(LoadUserAutoStart(id, items));
}
