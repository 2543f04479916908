// What the pages answer to commands of the controls that they have in common.

#include <windows.h>

#include <gtest/gtest.h>

#include "LoginProperties/Autostart/AutostartDialog.h"
#include "LoginProperties/General/GeneralDialog.h"
#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/Preferences/PreferenceDialog.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Proxy/ProxyControls.h"
#include "LoginProperties/Proxy/ProxyDialog.h"
#include "LoginProperties/Timeouts/TimeoutDialog.h"
#include "LoginProperties/WiFiSwitching/AutoReconnectDialog.h"

namespace {

// A page without a window.
template <typename Page>
struct Exposed : Page {
  Exposed() : Page(nullptr, nullptr, nullptr) {}
  using Page::OnCommand;
};

template <typename Page>
int Answer(int control, int notification) {
  return Exposed<Page>().OnCommand(static_cast<uint64_t>(MAKEWPARAM(control, notification)), 0);
}

class PageCommands : public testing::Test {
 protected:
  PageCommands() { GetContext().currentProfile = profile_; }
  ~PageCommands() override { GetContext() = {}; }

  static void HaveNoProfile() { GetContext().currentProfile = nullptr; }

  std::shared_ptr<Profile> profile_ = std::make_shared<Profile>(2001);
};

TEST_F(PageCommands, OfTheSelectorThatChangeNothingAreTakenOnTwoPages) {
  const auto expectAnswers = [] {
    EXPECT_EQ(Answer<GeneralDialog>(IDC_PROFILE_COMBO, CBN_DROPDOWN), 1);
    EXPECT_EQ(Answer<PreferenceDialog>(IDC_PROFILE_COMBO, CBN_DROPDOWN), 0);
    EXPECT_EQ(Answer<AutostartDialog>(IDC_PROFILE_COMBO, CBN_DROPDOWN), 0);
    EXPECT_EQ(Answer<ProxyDialog>(IDC_PROFILE_COMBO, CBN_DROPDOWN), 0);
    EXPECT_EQ(Answer<TimeoutDialog>(IDC_PROFILE_COMBO, CBN_DROPDOWN), 0);
    EXPECT_EQ(Answer<AutoReconnectDialog>(IDC_PROFILE_COMBO, CBN_DROPDOWN), 1);
  };
  expectAnswers();
  HaveNoProfile();
  expectAnswers();
}

TEST_F(PageCommands, OfOtherControlsAreTakenOnOnePage) {
  constexpr int kNoControl = 64000;
  const auto expectAnswers = [] {
    EXPECT_EQ(Answer<GeneralDialog>(kNoControl, 0), 0);
    EXPECT_EQ(Answer<PreferenceDialog>(kNoControl, 0), 0);
    EXPECT_EQ(Answer<AutostartDialog>(kNoControl, 0), 0);
    EXPECT_EQ(Answer<ProxyDialog>(kNoControl, 0), 0);
    EXPECT_EQ(Answer<TimeoutDialog>(kNoControl, 0), 0);
    EXPECT_EQ(Answer<AutoReconnectDialog>(kNoControl, 0), 1);
  };
  expectAnswers();
  HaveNoProfile();
  expectAnswers();
}

TEST_F(PageCommands, OfTheOverrideBoxAreTakenWithoutAProfileToo) {
  HaveNoProfile();
  EXPECT_EQ(Answer<PreferenceDialog>(IDC_OVERRIDE_CHECK, BN_CLICKED), 1);
  EXPECT_EQ(Answer<AutostartDialog>(IDC_OVERRIDE_CHECK, BN_CLICKED), 1);
  EXPECT_EQ(Answer<ProxyDialog>(IDC_OVERRIDE_CHECK, BN_CLICKED), 1);
  EXPECT_EQ(Answer<TimeoutDialog>(IDC_OVERRIDE_CHECK, BN_CLICKED), 0);
  EXPECT_EQ(Answer<AutoReconnectDialog>(IDC_OVERRIDE_CHECK, BN_CLICKED), 1);
}

// Nothing can be read, so that there is no list to edit.
TEST_F(PageCommands, OfTheProxyPagesOwnControlsAreLeftToTheFramework) {
  const auto expectAnswers = [] {
    for (const int id :
         {IDC_PROXY_AUTOMATIC_RADIO, IDC_PROXY_NOT_UPDATED_RADIO, IDC_PROXY_MANUAL_RADIO, IDC_PROXY_SETTINGS}) {
      EXPECT_EQ(Answer<ProxyDialog>(id, BN_CLICKED), 0) << id;
    }
  };
  expectAnswers();
  HaveNoProfile();
  expectAnswers();
}

// It has another control under the number of the box.
TEST_F(PageCommands, OfTheOverrideBoxDoNothingOnThePageWithoutIt) {
  EXPECT_EQ(Answer<GeneralDialog>(IDC_OVERRIDE_CHECK, BN_CLICKED), 0);
  EXPECT_EQ(profile_->GetState(), ChangeState::Unchanged);
}

}  // namespace
