#include "Database/Profiles/PageOverrides.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

// The columns that a profile with these settings overrides, in any order.
std::vector<std::wstring_view> Overridden(const Profile& profile) {
  std::vector<std::wstring_view> columns;
  for (const PageOverride& page : PageOverrides()) {
    if (page.overrides(profile)) columns.insert(columns.end(), page.columns.begin(), page.columns.end());
  }
  return columns;
}

}  // namespace

TEST(PageOverrides, AreOffInANewProfile) { EXPECT_THAT(Overridden(Profile(0)), testing::IsEmpty()); }

TEST(PageOverrides, TellTheColumnsOfEachPage) {
  Profile timeouts(0);
  timeouts.SetDefaultTimeouts(false);
  EXPECT_THAT(Overridden(timeouts),
              testing::UnorderedElementsAre(L"DefaultTimeouts", L"DurationTime", L"ThresholdOnOff", L"ThresholdBytes",
                                            L"ThresholdTimeOut", L"WarnTime"));
  Profile proxy(0);
  proxy.SetDefaultProxy(false);
  EXPECT_THAT(Overridden(proxy), testing::UnorderedElementsAre(L"DefaultProxy", L"AutoProxySetting",
                                                               L"ManualProxySetting", L"ProxyExceptionsSetting"));
  Profile wifi(0);
  wifi.SetOverrideAutoReconnectDefaults(true);
  EXPECT_THAT(Overridden(wifi),
              testing::UnorderedElementsAre(L"OverrideAutoReconnectDefaults", L"OverrideARMode", L"OverrideASWiFiMode",
                                            L"OverridePromptUserToSwitch", L"OverrideSwitchInterval",
                                            L"OverrideSignalStrength", L"AdvancedAutoReconnectSettings"));
  Profile lists(0);
  lists.SetDefaultPreferences(false);
  lists.SetDefaultAutostart(false);
  EXPECT_THAT(Overridden(lists), testing::UnorderedElementsAre(L"DefaultPreferences", L"DefaultAutostart"));
}

TEST(PageOverrides, NameColumnsOfAProfile) {
  const Profile profile(0);
  for (const PageOverride& page : PageOverrides()) {
    for (const std::wstring_view name : page.columns) {
      EXPECT_TRUE(std::ranges::any_of(profile.GetBindings(),
                                      [name](const ColumnBinding& column) { return column.name == name; }));
    }
  }
}

TEST(PageOverrides, PreferencesAreSharedAbove10000) {
  EXPECT_TRUE(CanOwnPreferences(2001));
  EXPECT_TRUE(CanOwnPreferences(9999));
  EXPECT_FALSE(CanOwnPreferences(10001));
}
