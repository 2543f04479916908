#include "LoginProperties/Proxy/ProxyRules.h"

#include "LoginProperties/ProfilePage/CutText.h"
#include "LoginProperties/Proxy/ProxyStrings.h"
#include "NetUtilities/Text/IgnoringCase.h"

namespace {

size_t IndexOf(ProxySetting setting) { return static_cast<size_t>(setting); }

}  // namespace

ProxyModes ModesOf(const Profile& profile) {
  return {profile.GetAutoProxySetting(), profile.GetManualProxySetting(), profile.GetProxyExceptionsSetting()};
}

void SetModes(Profile& profile, const ProxyModes& modes) {
  profile.SetAutoProxySetting(modes[IndexOf(ProxySetting::AutoUrl)]);
  profile.SetManualProxySetting(modes[IndexOf(ProxySetting::ManualProxy)]);
  profile.SetProxyExceptionsSetting(modes[IndexOf(ProxySetting::Exceptions)]);
}

wchar_t ModeOf(const Profile& profile, ProxySetting setting) { return ModesOf(profile)[IndexOf(setting)]; }

void SetMode(Profile& profile, ProxySetting setting, wchar_t mode) {
  ProxyModes modes = ModesOf(profile);
  modes[IndexOf(setting)] = mode;
  SetModes(profile, modes);
}

unsigned ModeString(wchar_t mode) {
  switch (mode) {
    case kUpdatedAutomatically:
      return IDS_PROXY_AUTOMATICALLY;
    case kUpdatedManually:
      return IDS_PROXY_MANUAL;
    case kNotUpdated:
      return IDS_PROXY_NOT_UPDATED;
    default:
      return IDS_PROXY_UNKNOWN;
  }
}

std::wstring& TextOf(ConfigSetting& config, ProxySetting setting) {
  switch (setting) {
    case ProxySetting::AutoUrl:
      return config.fields.autoProxyUrl;
    case ProxySetting::ManualProxy:
      return config.fields.manualProxy;
    case ProxySetting::Exceptions:
      break;
  }
  return config.fields.proxyExceptions;
}

std::wstring ShownValue(const std::shared_ptr<ConfigSetting>& config, ProxySetting setting,
                        const std::wstring& leaveWord) {
  if (!config) return {};
  const std::wstring& text = TextOf(*config, setting);
  return EqualsNoCaseAscii(text, L"leave") ? leaveWord : text;
}

bool CanEnterValues(bool overrides, wchar_t mode) { return overrides && mode == kUpdatedManually; }

void StoreAutoUrl(const std::wstring& typed, ConfigSetting& config) {
  constexpr size_t kLongestUrl = 511;
  if (typed != config.fields.autoProxyUrl) config.fields.autoProxyUrl = CutText(typed, kLongestUrl);
  config.SetState(ChangeState::Changed);
}
