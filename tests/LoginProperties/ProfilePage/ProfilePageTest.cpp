#include <gmock/gmock.h>

#include "LoginProperties/PageSet.h"
#include "LoginProperties/ProfilePage/ConfigCache.h"
#include "LoginProperties/ProfilePage/OverridePolicy.h"
#include "LoginProperties/ProfilePage/ProfileSelector.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::shared_ptr<Profile> Named(uint32_t id, const std::wstring& name, bool hidden = false) {
  auto profile = std::make_shared<Profile>(id);
  profile->SetName(name);
  profile->SetHidden(hidden);
  return profile;
}

int configLoads = 0;
std::shared_ptr<ConfigSetting> storedConfig;

bool LoadStoredConfig(uint32_t, std::shared_ptr<ConfigSetting>& config) {
  ++configLoads;
  config = storedConfig;
  return config != nullptr;
}

int desktopQuestions = 0;

}  // namespace

TEST(SelectableProfiles, LeavesOutRootsNamelessAndHiddenProfilesAndNullRecords) {
  ProfileTable profiles;
  for (const auto& profile : {Named(1, L"Default"), Named(2000, L"Last root"), Named(2001, L"First"), Named(2002, L""),
                              Named(2003, L"Hidden", true), Named(12345, L"Far")}) {
    profiles.emplace(profile->GetProfileId(), profile);
  }
  profiles.emplace(3000, nullptr);
  std::vector<std::pair<std::wstring, uint32_t>> found;
  for (const auto& profile : SelectableProfiles(profiles)) found.emplace_back(profile.name, profile.id);
  EXPECT_THAT(found, ElementsAre(std::pair{L"First", 2001u}, std::pair{L"Far", 12345u}));
}

TEST(FindProfile, GivesNullForAnIdWithoutARecord) {
  const auto profile = Named(2001, L"First");
  const ProfileTable profiles = {{2001, profile}, {2002, nullptr}};
  EXPECT_EQ(FindProfile(profiles, 2001), profile);
  EXPECT_EQ(FindProfile(profiles, 2002), nullptr);
  EXPECT_EQ(FindProfile(profiles, 0xffffffff), nullptr);
}

TEST(OverridePolicy, HoldsUnlessShiftAndCtrlAreBothDown) {
  EXPECT_TRUE(PolicyHolds(1, false, false));
  EXPECT_TRUE(PolicyHolds(1, true, false));
  EXPECT_TRUE(PolicyHolds(1, false, true));
  EXPECT_FALSE(PolicyHolds(1, true, true));
  EXPECT_TRUE(PolicyHolds(7, false, false));
  EXPECT_FALSE(PolicyHolds(0, false, false));
}

TEST(OverridePolicy, HasAKeyPerPage) {
  EXPECT_EQ(PolicyKeyOf(L"Timeouts"), L"SOFTWARE\\Ostrel\\Wayline\\Settings\\Dialog\\Timeouts");
}

TEST(ConfigCache, AsksTheLibraryOncePerProfile) {
  configLoads = 0;
  storedConfig = std::make_shared<ConfigSetting>();
  ConfigTable cache;
  EXPECT_EQ(FindOrLoadConfig(cache, 2001, LoadStoredConfig), storedConfig);
  EXPECT_EQ(FindOrLoadConfig(cache, 2001, LoadStoredConfig), storedConfig);
  EXPECT_EQ(configLoads, 1);
  FindOrLoadConfig(cache, 2002, LoadStoredConfig);
  EXPECT_EQ(configLoads, 2);
}

TEST(ConfigCache, KeepsAFailureAsNull) {
  configLoads = 0;
  storedConfig = nullptr;
  ConfigTable cache;
  EXPECT_EQ(FindOrLoadConfig(cache, 2001, LoadStoredConfig), nullptr);
  EXPECT_EQ(FindOrLoadConfig(cache, 2001, LoadStoredConfig), nullptr);
  EXPECT_EQ(configLoads, 1);
  EXPECT_EQ(cache.size(), 1u);
}

TEST(PageSet, TheFullSheetHasSixPagesInOrder) {
  EXPECT_THAT(
      PagesOf(SheetMode::Full, [] { return false; }),
      ElementsAre(Page::General, Page::Preferences, Page::Autostart, Page::Proxy, Page::Timeouts, Page::WiFiSwitching));
}

TEST(PageSet, TheLogOnDesktopHasNeitherAutostartNorProxy) {
  EXPECT_THAT(PagesOf(SheetMode::Full, [] { return true; }),
              ElementsAre(Page::General, Page::Preferences, Page::Timeouts, Page::WiFiSwitching));
}

TEST(PageSet, AsksForTheDesktopBeforeEachOptionalPage) {
  desktopQuestions = 0;
  PagesOf(SheetMode::Full, [] { return ++desktopQuestions == 2; });
  EXPECT_EQ(desktopQuestions, 2);
}

TEST(PageSet, TheOtherModesHaveOnePageOrNone) {
  const auto never = [] { return false; };
  EXPECT_THAT(PagesOf(SheetMode::TimeoutsOnly, never), ElementsAre(Page::Timeouts));
  EXPECT_THAT(PagesOf(SheetMode::WiFiSwitchingOnly, never), ElementsAre(Page::WiFiSwitching));
  EXPECT_THAT(PagesOf(SheetMode{0}, never), IsEmpty());
  EXPECT_THAT(PagesOf(SheetMode{4}, never), IsEmpty());
}
