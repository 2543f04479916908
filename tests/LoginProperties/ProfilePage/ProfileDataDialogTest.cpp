#include "LoginProperties/ProfilePage/ProfileDataDialog.h"

#include <gmock/gmock.h>

#include "LoginProperties/LoginPropertiesContext.h"
#include "tests/support/TemporaryFolder.h"
#include "WaylineDll/Host.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

// What pages find in their base.
struct Page : ProfileDataDialog {
  using ProfileDataDialog::GetCurrentAutoConfig;
  using ProfileDataDialog::GetCurrentManualConfig;
};

constexpr uint32_t kWithConfigs = 2004;  // of the sample data
constexpr uint32_t kWithoutConfigs = 2002;

class ProfileConfigs : public testing::Test {
 protected:
  ProfileConfigs() { EXPECT_EQ(OpenSettings(file_), Failure()); }
  ~ProfileConfigs() override {
    GetContext() = {};
    CloseSettings();
  }

  static void Choose(uint32_t profileId) { GetContext().currentProfile = std::make_shared<Profile>(profileId); }

  TemporaryFolder folder_;
  std::wstring file_ = folder_.File(L"Wayline.db");
};

TEST_F(ProfileConfigs, AreTheFoundAndTheEnteredOneOfTheCurrentProfile) {
  Choose(kWithConfigs);
  const auto found = Page::GetCurrentAutoConfig();
  const auto entered = Page::GetCurrentManualConfig();
  ASSERT_NE(found, nullptr);
  ASSERT_NE(entered, nullptr);
  EXPECT_NE(found, entered);

  EXPECT_EQ(found->fields.profileId, 2004);
  EXPECT_TRUE(found->fields.automatic);
  EXPECT_EQ(found->fields.manualProxy, L"proxy.example.net:3128");
  EXPECT_EQ(found->fields.proxyExceptions, L"*.example.net");

  EXPECT_EQ(entered->fields.profileId, 2004);
  EXPECT_FALSE(entered->fields.automatic);
  EXPECT_EQ(entered->fields.autoProxyUrl, L"http://proxy.example.net/office.pac");
  EXPECT_EQ(entered->fields.manualProxy, L"proxy1.example.net:3128;proxy2.example.net:3128");
}

TEST_F(ProfileConfigs, AreKeptInTheContextUnderTheirProfile) {
  Choose(kWithConfigs);
  const auto found = Page::GetCurrentAutoConfig();
  const auto entered = Page::GetCurrentManualConfig();
  EXPECT_THAT(GetContext().autoConfigs, ElementsAre(Pair(kWithConfigs, found)));
  EXPECT_THAT(GetContext().manualConfigs, ElementsAre(Pair(kWithConfigs, entered)));
}

TEST_F(ProfileConfigs, AreMissingWithoutACurrentProfile) {
  EXPECT_EQ(Page::GetCurrentAutoConfig(), nullptr);
  EXPECT_EQ(Page::GetCurrentManualConfig(), nullptr);
  EXPECT_TRUE(GetContext().autoConfigs.empty());
  EXPECT_TRUE(GetContext().manualConfigs.empty());
}

TEST_F(ProfileConfigs, AreLoadedOnce) {
  Choose(kWithConfigs);
  const auto found = Page::GetCurrentAutoConfig();
  const auto entered = Page::GetCurrentManualConfig();
  ASSERT_NE(found, nullptr);
  ASSERT_NE(entered, nullptr);
  CloseSettings();
  EXPECT_EQ(Page::GetCurrentAutoConfig(), found);
  EXPECT_EQ(Page::GetCurrentManualConfig(), entered);
}

TEST_F(ProfileConfigs, AreLoadedForEachProfileAndKind) {
  Choose(kWithConfigs);
  Page::GetCurrentAutoConfig();
  EXPECT_THAT(GetContext().manualConfigs, IsEmpty());
  Choose(1);
  const auto found = Page::GetCurrentAutoConfig();
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->fields.profileId, 1);
  EXPECT_EQ(GetContext().autoConfigs.size(), 2u);
}

TEST_F(ProfileConfigs, AreEmptyForAProfileWithoutThem) {
  Choose(kWithoutConfigs);
  for (const auto& config : {Page::GetCurrentAutoConfig(), Page::GetCurrentManualConfig()}) {
    ASSERT_NE(config, nullptr);
    EXPECT_EQ(config->fields.profileId, static_cast<int32_t>(kWithoutConfigs));
    EXPECT_EQ(config->fields.manualProxy, L"");
    EXPECT_EQ(config->GetState(), ChangeState::Unchanged);
  }
}

TEST_F(ProfileConfigs, AreNotLoadedAgainAfterAFailure) {
  CloseSettings();
  Choose(kWithConfigs);
  EXPECT_EQ(Page::GetCurrentAutoConfig(), nullptr);
  EXPECT_EQ(Page::GetCurrentManualConfig(), nullptr);
  ASSERT_EQ(OpenSettings(file_), Failure());
  EXPECT_EQ(Page::GetCurrentAutoConfig(), nullptr);
  EXPECT_EQ(Page::GetCurrentManualConfig(), nullptr);
}

}  // namespace
