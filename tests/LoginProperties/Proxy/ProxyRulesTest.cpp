#include "LoginProperties/Proxy/ProxyRules.h"

#include <gtest/gtest.h>

#include "LoginProperties/Proxy/ProxyStrings.h"

namespace {

constexpr wchar_t kLeaveWord[] = L"Leave";

std::shared_ptr<ConfigSetting> Config(const wchar_t* url, const wchar_t* proxies, const wchar_t* exceptions) {
  auto config = std::make_shared<ConfigSetting>();
  config->fields.autoProxyUrl = url;
  config->fields.manualProxy = proxies;
  config->fields.proxyExceptions = exceptions;
  return config;
}

TEST(ProxyRules, EachSettingHasItsModeInTheProfile) {
  Profile profile(2001);
  EXPECT_EQ(ModesOf(profile), (ProxyModes{L'a', L'a', L'a'}));
  SetMode(profile, ProxySetting::AutoUrl, L'n');
  SetMode(profile, ProxySetting::ManualProxy, L'm');
  SetMode(profile, ProxySetting::Exceptions, L'x');
  EXPECT_EQ(profile.GetAutoProxySetting(), L'n');
  EXPECT_EQ(profile.GetManualProxySetting(), L'm');
  EXPECT_EQ(profile.GetProxyExceptionsSetting(), L'x');
  EXPECT_EQ(ModesOf(profile), (ProxyModes{L'n', L'm', L'x'}));
  for (const ProxySetting setting : kProxySettings) {
    EXPECT_EQ(ModeOf(profile, setting), ModesOf(profile)[static_cast<size_t>(setting)]);
  }
  EXPECT_EQ(profile.GetState(), ChangeState::Unchanged) << "the page says what counts as a change";
}

TEST(ProxyRules, AllModesAreSetAtOnce) {
  Profile profile(2001);
  SetModes(profile, {L'm', L'n', L'a'});
  EXPECT_EQ(profile.GetAutoProxySetting(), L'm');
  EXPECT_EQ(profile.GetManualProxySetting(), L'n');
  EXPECT_EQ(profile.GetProxyExceptionsSetting(), L'a');
}

TEST(ProxyRules, EveryModeHasAText) {
  EXPECT_EQ(ModeString(L'a'), unsigned{IDS_PROXY_AUTOMATICALLY});
  EXPECT_EQ(ModeString(L'm'), unsigned{IDS_PROXY_MANUAL});
  EXPECT_EQ(ModeString(L'n'), unsigned{IDS_PROXY_NOT_UPDATED});
  for (const wchar_t other : {L'A', L'M', L'N', L'x', L' ', L'\0', L'\xe4'}) {
    EXPECT_EQ(ModeString(other), unsigned{IDS_PROXY_UNKNOWN});
  }
}

TEST(ProxyRules, OnlyTwoModesTakeValues) {
  EXPECT_TRUE(TakesValues(L'a'));
  EXPECT_TRUE(TakesValues(L'm'));
  for (const wchar_t other : {L'n', L'A', L'M', L'x', L'\0'}) EXPECT_FALSE(TakesValues(other));
}

TEST(ProxyRules, EachSettingHasItsTextInAConfiguration) {
  const auto config = Config(L"url", L"proxy", L"exception");
  EXPECT_EQ(TextOf(*config, ProxySetting::AutoUrl), L"url");
  EXPECT_EQ(TextOf(*config, ProxySetting::ManualProxy), L"proxy");
  EXPECT_EQ(TextOf(*config, ProxySetting::Exceptions), L"exception");
  TextOf(*config, ProxySetting::ManualProxy) = L"other";
  EXPECT_EQ(config->fields.manualProxy, L"other");
  for (const ProxySetting setting : kProxySettings) {
    EXPECT_EQ(ShownValue(config, setting, kLeaveWord), TextOf(*config, setting));
  }
}

TEST(ProxyRules, LeaveIsShownAsAWordInAnyCase) {
  for (const wchar_t* leave : {L"leave", L"LEAVE", L"Leave", L"lEaVe"}) {
    const auto config = Config(leave, leave, leave);
    for (const ProxySetting setting : kProxySettings) EXPECT_EQ(ShownValue(config, setting, L"Word"), L"Word");
  }
  for (const wchar_t* other : {L"", L"leave ", L" leave", L"leaves", L"leav", L"leave;leave"}) {
    EXPECT_EQ(ShownValue(Config(other, L"", L""), ProxySetting::AutoUrl, L"Word"), other);
  }
}

TEST(ProxyRules, NoConfigurationShowsNoValue) {
  for (const ProxySetting setting : kProxySettings) EXPECT_EQ(ShownValue(nullptr, setting, kLeaveWord), L"");
}

TEST(ProxyRules, ValuesCanBeEnteredOnlyForAnOverridingProfileAndTheManualMode) {
  EXPECT_TRUE(CanEnterValues(true, L'm'));
  EXPECT_FALSE(CanEnterValues(false, L'm'));
  for (const wchar_t other : {L'a', L'n', L'M', L'x', L'\0'}) EXPECT_FALSE(CanEnterValues(true, other));
}

TEST(ProxyRules, AUrlIsStoredUpToItsLongest) {
  for (const size_t length : {size_t{0}, size_t{1}, size_t{510}, size_t{511}, size_t{512}, size_t{600}}) {
    const auto config = Config(L"before", L"proxy", L"exception");
    StoreAutoUrl(std::wstring(length, L'u'), *config);
    EXPECT_EQ(config->fields.autoProxyUrl, std::wstring(std::min<size_t>(length, 511), L'u'));
    EXPECT_EQ(config->fields.manualProxy, L"proxy");
    EXPECT_EQ(config->fields.proxyExceptions, L"exception");
    EXPECT_EQ(config->GetState(), ChangeState::Changed);
  }
}

TEST(ProxyRules, AUrlThatWasOnlyLookedAtKeepsItsLength) {
  const std::wstring url(600, L'u');
  const auto config = Config(url.c_str(), L"", L"");
  StoreAutoUrl(url, *config);
  EXPECT_EQ(config->fields.autoProxyUrl, url);
  StoreAutoUrl(url + L'x', *config);
  EXPECT_EQ(config->fields.autoProxyUrl.size(), 511u);
}

TEST(ProxyRules, AUrlIsNotCutThroughACharacter) {
  const auto config = Config(L"", L"", L"");
  StoreAutoUrl(std::wstring(510, L'u') + L"\xd83d\xde00", *config);
  EXPECT_EQ(config->fields.autoProxyUrl, std::wstring(510, L'u'));
}

}  // namespace
