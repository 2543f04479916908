// The wizard for servers.

#include <gmock/gmock.h>

#include <tuple>

#include "tests/WaylineDll/SetupWizard/WizardTest.h"

namespace {

using testing::ElementsAre;

constexpr wchar_t kAutomatic[] = L"Automatic";
constexpr wchar_t kManual[] = L"Use this:";
constexpr wchar_t kNone[] = L"None";

class ServersWizard : public WizardTest {
 protected:
  void Open() { WizardTest::Open(WizardId::Servers); }
};

struct Row {
  WizardPage page;
  int mode;
  int value;
  const wchar_t* wrong;
  const wchar_t* right;
  const wchar_t* expected;
};

const Row kRows[] = {
    {WizardPage::Servers, IDC_WIZARD_DNS1_MODE, IDC_WIZARD_DNS1, L"dns.example.com", L"2001:db8::53",
     L"Please enter the address of DNS server 1: an IPv4 or IPv6 address such as 192.0.2.53 or 2001:db8::53."},
    {WizardPage::Servers, IDC_WIZARD_DNS2_MODE, IDC_WIZARD_DNS2, L"192.0.2.256", L"192.0.2.54",
     L"Please enter the address of DNS server 2: an IPv4 or IPv6 address such as 192.0.2.53 or 2001:db8::53."},
    {WizardPage::Servers, IDC_WIZARD_WINS1_MODE, IDC_WIZARD_WINS1, L"2001:db8::53", L"192.0.2.55",
     L"Please enter the address of WINS server 1: an IPv4 address such as 192.0.2.53."},
    {WizardPage::Servers, IDC_WIZARD_WINS2_MODE, IDC_WIZARD_WINS2, L"192.0.2", L"192.0.2.56",
     L"Please enter the address of WINS server 2: an IPv4 address such as 192.0.2.53."},
    {WizardPage::Domains, IDC_WIZARD_DOMAIN_MODE, IDC_WIZARD_DOMAIN, L"-example.com", L"example.com",
     L"Please enter a domain name such as example.com: letters, digits and hyphens between dots, at most 63 characters "
     L"each and 253 in all."},
    {WizardPage::Domains, IDC_WIZARD_SUFFIXES_MODE, IDC_WIZARD_SUFFIXES, L"a.com, b/c", L"a.com,b.com",
     L"Please enter the suffixes to search: domain names with commas between them, such as example.com, example.org."},
};

}  // namespace

TEST_F(ServersWizard, ShowsTheServersAndStoresWhatIsEntered) {
  data.profile->Columns().dns1Setting = L'm';
  data.manualConfig->fields.dns1 = L"192.0.2.53";
  data.profile->Columns().wins2Setting = L'n';
  Open();
  EXPECT_EQ(wizard->Title(), L"Servers");
  EXPECT_THAT(wizard->Items(IDC_WIZARD_DNS1_MODE), ElementsAre(kAutomatic, kManual, kNone));
  EXPECT_EQ(wizard->Selected(IDC_WIZARD_DNS1_MODE), kManual);
  EXPECT_EQ(wizard->Text(IDC_WIZARD_DNS1), L"192.0.2.53");
  EXPECT_EQ(wizard->Selected(IDC_WIZARD_DNS2_MODE), kAutomatic);
  EXPECT_EQ(wizard->Selected(IDC_WIZARD_WINS2_MODE), kNone);
  wizard->Pick(IDC_WIZARD_DNS1_MODE, kNone);
  wizard->Pick(IDC_WIZARD_WINS1_MODE, kManual);
  wizard->Type(IDC_WIZARD_WINS1, L"192.0.2.55");
  wizard->PressNext();
  ASSERT_EQ(wizard->CurrentPage(), WizardPage::Domains);
  wizard->Pick(IDC_WIZARD_DOMAIN_MODE, kManual);
  wizard->Type(IDC_WIZARD_DOMAIN, L"example.com");
  wizard->Pick(IDC_WIZARD_SUFFIXES_MODE, kManual);
  wizard->Type(IDC_WIZARD_SUFFIXES, L"a.com; b.com");
  wizard->PressFinish();
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_EQ(Columns().dns1Setting, L'n');
  EXPECT_EQ(data.manualConfig->fields.dns1, L"192.0.2.53");
  EXPECT_EQ(Columns().dns2Setting, L'a');
  EXPECT_EQ(Columns().wins1Setting, L'm');
  EXPECT_EQ(data.manualConfig->fields.wins1, L"192.0.2.55");
  EXPECT_EQ(Columns().domainNameSetting, L'm');
  EXPECT_EQ(data.manualConfig->fields.domainName, L"example.com");
  EXPECT_EQ(Columns().searchListSetting, L'm');
  EXPECT_EQ(data.manualConfig->fields.searchList, L"a.com,b.com");
  EXPECT_EQ(data.profile->GetState(), ChangeState::Unchanged);
}

TEST_F(ServersWizard, LeavesTheRecordsAloneUntilItIsFinished) {
  Open();
  wizard->Pick(IDC_WIZARD_DNS1_MODE, kManual);
  wizard->Type(IDC_WIZARD_DNS1, L"192.0.2.53");
  wizard->PressNext();
  EXPECT_EQ(Columns().dns1Setting, L'a');
  EXPECT_EQ(data.manualConfig->fields.dns1, L"");
  wizard->PressCancel();
  EXPECT_EQ(wizard->Result(), 0);
  EXPECT_EQ(Columns().dns1Setting, L'a');
  EXPECT_EQ(data.manualConfig->fields.dns1, L"");
}

TEST_F(ServersWizard, LetsAValueBeEnteredOnlyWhereItIsUsed) {
  Open();
  for (const Row& row : kRows) {
    GoTo(row.page);
    wizard->Pick(row.mode, kManual);
    EXPECT_TRUE(wizard->IsEnabled(row.value)) << row.value;
    for (const wchar_t* mode : {kNone, kAutomatic}) {
      wizard->Pick(row.mode, mode);
      EXPECT_FALSE(wizard->IsEnabled(row.value)) << row.value;
    }
  }
}

TEST_F(ServersWizard, RefusesAWrongValueWhenItIsLeft) {
  Open();
  for (const Row& row : kRows) {
    GoTo(row.page);
    wizard->Pick(row.mode, kManual);
    for (const wchar_t* wrong : {row.wrong, L"", L"  "}) {
      wizard->Type(row.value, wrong);
      wizard->TryFocusButton(row.page == WizardPage::Domains ? WizardDriver::kFinish : WizardDriver::kNext);
      ExpectRefusal(row.value, row.expected);
    }
    wizard->Type(row.value, row.right);
    wizard->TryFocusButton(WizardDriver::kBack);
    EXPECT_EQ(wizard->MessageBoxText(), std::nullopt);
  }
}

TEST_F(ServersWizard, RefusesAManualModeWithoutAValueWhenThePageIsLeft) {
  Open();
  wizard->Pick(IDC_WIZARD_WINS1_MODE, kManual);
  wizard->PressNext();
  ExpectRefusal(IDC_WIZARD_WINS1, kRows[2].expected);
  wizard->Pick(IDC_WIZARD_WINS1_MODE, kAutomatic);
  wizard->PressNext();
  wizard->Pick(IDC_WIZARD_SUFFIXES_MODE, kManual);
  wizard->PressFinish();
  ExpectRefusal(IDC_WIZARD_SUFFIXES, kRows[5].expected);
  EXPECT_TRUE(wizard->IsOpen());
}

TEST_F(ServersWizard, LetsTheModeBeChosenAnewInsteadOfAWrongValue) {
  Open();
  wizard->Pick(IDC_WIZARD_DNS1_MODE, kManual);
  wizard->Type(IDC_WIZARD_DNS1, L"dns.example.com");
  wizard->TryFocus(IDC_WIZARD_DNS1_MODE);
  EXPECT_EQ(wizard->MessageBoxText(), std::nullopt);
  wizard->Pick(IDC_WIZARD_DNS1_MODE, kAutomatic);
  wizard->PressNext();
  wizard->PressFinish();
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_EQ(Columns().dns1Setting, L'a');
  EXPECT_EQ(data.manualConfig->fields.dns1, L"");
}

TEST_F(ServersWizard, GoesBackWithAWrongValueAndKeepsIt) {
  Open();
  wizard->PressNext();
  wizard->Pick(IDC_WIZARD_DOMAIN_MODE, kManual);
  wizard->Type(IDC_WIZARD_DOMAIN, L"-");
  wizard->PressBack();
  EXPECT_EQ(wizard->MessageBoxText(), std::nullopt);
  ASSERT_EQ(wizard->CurrentPage(), WizardPage::Servers);
  wizard->PressNext();
  EXPECT_EQ(wizard->Selected(IDC_WIZARD_DOMAIN_MODE), kManual);
  EXPECT_EQ(wizard->Text(IDC_WIZARD_DOMAIN), L"-");
  wizard->PressFinish();
  ExpectRefusal(IDC_WIZARD_DOMAIN, kRows[4].expected);
}

TEST_F(ServersWizard, CancelsWithAWrongValueWithoutAWord) {
  Open();
  wizard->Pick(IDC_WIZARD_DNS1_MODE, kManual);
  wizard->Type(IDC_WIZARD_DNS1, L"dns.example.com");
  wizard->TryFocusButton(IDCANCEL);
  EXPECT_EQ(wizard->MessageBoxText(), std::nullopt);
  wizard->PressCancel();
  EXPECT_EQ(wizard->Result(), 0);
}

TEST_F(ServersWizard, TakesAPastedTextWithoutTheLineEndsAroundIt) {
  Open();
  wizard->Pick(IDC_WIZARD_DNS1_MODE, kManual);
  wizard->Paste(IDC_WIZARD_DNS1, L"\r\n 192.0.2.53\r\n");
  EXPECT_EQ(wizard->Text(IDC_WIZARD_DNS1), L"192.0.2.53");
  wizard->PressNext();
  wizard->Pick(IDC_WIZARD_SUFFIXES_MODE, kManual);
  wizard->Paste(IDC_WIZARD_SUFFIXES, L"\r\na.com\r\nb.com\r\n");
  wizard->PressFinish();
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_EQ(data.manualConfig->fields.dns1, L"192.0.2.53");
  EXPECT_EQ(data.manualConfig->fields.searchList, L"a.com,b.com");
}

TEST_F(ServersWizard, KeepsAModeThatItDoesNotKnowUntilAnotherIsPicked) {
  data.profile->Columns().dns1Setting = L'x';
  data.profile->Columns().dns2Setting = L'y';
  Open();
  EXPECT_EQ(wizard->Selected(IDC_WIZARD_DNS1_MODE), std::nullopt);
  EXPECT_FALSE(wizard->IsEnabled(IDC_WIZARD_DNS1));
  wizard->Pick(IDC_WIZARD_DNS2_MODE, kNone);
  GoTo(WizardPage::Domains);
  wizard->PressFinish();
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_EQ(Columns().dns1Setting, L'x');
  EXPECT_EQ(Columns().dns2Setting, L'n');
}

TEST_F(ServersWizard, TellsThatTheServersCannotBeRead) {
  data.manualConfig = nullptr;
  Open();
  EXPECT_EQ(wizard->MessageBoxText(),
            L"The server settings of the login profile cannot be read, so they cannot be changed.");
  wizard->AnswerMessageBox();
  EXPECT_EQ(wizard->Result(), 0);
}
