#include "tests/WaylineDll/SetupWizard/WizardTest.h"

#include "WaylineDll/Host.h"
#include "WaylineDll/NewProfile.h"
#include "WaylineDll/ProxyConfigs.h"

namespace {

constexpr uint32_t kWork = 2001;

}  // namespace

WizardTest::WizardTest() {
  EXPECT_EQ(OpenSettings(folder.File(L"Wayline.db")), std::nullopt);
  EXPECT_EQ(LoadProfiles(data.profiles), std::nullopt);
  data.profile = std::make_shared<Profile>(*data.profiles.at(kWork));
  data.manualConfig = std::make_shared<ConfigSetting>();
}

WizardTest::~WizardTest() {
  wizard.reset();
  CloseSettings();
}

void WizardTest::MakeNewProfile() {
  data.profile = CreateNewProfile();
  ASSERT_NE(data.profile, nullptr);
  ASSERT_TRUE(LoadManualConfig(data.profile->GetProfileId(), data.manualConfig));
}

void WizardTest::GoTo(WizardPage page) {
  while (wizard->CurrentPage() != page) {
    const auto before = wizard->CurrentPage();
    wizard->PressNext();
    ASSERT_EQ(wizard->MessageBoxText(), std::nullopt);
    ASSERT_NE(wizard->CurrentPage(), before);
  }
}

void WizardTest::ExpectRefusal(int field, const std::wstring& message) {
  ASSERT_EQ(wizard->MessageBoxText(), message);
  wizard->AnswerMessageBox();
  EXPECT_EQ(wizard->MessageBoxText(), std::nullopt);
  EXPECT_EQ(wizard->FocusedControl(), field);
  EXPECT_EQ(wizard->SelectedText(field), wizard->Text(field));
}
