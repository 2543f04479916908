// The wizard for user ID and network service.

#include <gmock/gmock.h>

#include "tests/support/WaitUntil.h"
#include "tests/ui/Screenshot.h"
#include "tests/WaylineDll/SetupWizard/WizardTest.h"

namespace {

using testing::ElementsAre;

constexpr wchar_t kUserIdExpected[] =
    L"The user ID can have at most 256 characters, and no blanks, tabs or other control characters.";

class UserIdWizard : public WizardTest {
 protected:
  void Open() { WizardTest::Open(WizardId::UserIdAndService); }
};

}  // namespace

TEST_F(UserIdWizard, ShowsTheProfileAndStoresWhatIsEntered) {
  data.profile->SetAccount(L"Example");
  Open();
  EXPECT_EQ(wizard->Title(), L"User ID and Network Service");
  EXPECT_EQ(wizard->CurrentPage(), WizardPage::UserId);
  EXPECT_EQ(wizard->Text(IDC_WIZARD_ACCOUNT), L"Example");
  EXPECT_EQ(wizard->Text(IDC_WIZARD_USER_ID), L"a.sample");
  EXPECT_FALSE(wizard->CanPress(WizardDriver::kBack));
  wizard->Type(IDC_WIZARD_ACCOUNT, L"Example Company");
  wizard->Type(IDC_WIZARD_USER_ID, L"b.sample");
  wizard->PressNext();
  ASSERT_EQ(wizard->CurrentPage(), WizardPage::Service);
  EXPECT_THAT(wizard->Items(IDC_WIZARD_SERVICE), ElementsAre(L"Standard Access", L"Secure Tunnel", L"Guest Internet"));
  EXPECT_EQ(wizard->Selected(IDC_WIZARD_SERVICE), L"Standard Access");
  wizard->Pick(IDC_WIZARD_SERVICE, L"Guest Internet");
  wizard->PressFinish();
  EXPECT_EQ(wizard->Result(), 1);
  EXPECT_EQ(data.profile->GetAccount(), L"Example Company");
  EXPECT_EQ(data.profile->GetUserId(), L"b.sample");
  EXPECT_EQ(data.profile->GetLinkService(), 402);
}
