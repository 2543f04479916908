#pragma once

#include <array>
#include <memory>
#include <string>

#include "Database/Profiles/Profile.h"
#include "WaylineDll/ConfigSetting.h"

/// What a profile says of a proxy setting. Any other character may be stored too, and says nothing.
inline constexpr wchar_t kUpdatedAutomatically = L'a';
inline constexpr wchar_t kUpdatedManually = L'm';
inline constexpr wchar_t kNotUpdated = L'n';

/// The proxy settings, in the order of the page's rows.
enum class ProxySetting {
  AutoUrl,
  ManualProxy,
  Exceptions,
};
inline constexpr std::array kProxySettings = {ProxySetting::AutoUrl, ProxySetting::ManualProxy,
                                              ProxySetting::Exceptions};

/// The modes of all settings, in the same order.
using ProxyModes = std::array<wchar_t, kProxySettings.size()>;

ProxyModes ModesOf(const Profile& profile);
void SetModes(Profile& profile, const ProxyModes& modes);

wchar_t ModeOf(const Profile& profile, ProxySetting setting);
void SetMode(Profile& profile, ProxySetting setting, wchar_t mode);

/// Whether a setting of this mode gets its value from a configuration.
constexpr bool TakesValues(wchar_t mode) { return mode == kUpdatedAutomatically || mode == kUpdatedManually; }

/// Number of the string that says a mode.
unsigned ModeString(wchar_t mode);

/// The text of a setting in a configuration.
std::wstring& TextOf(ConfigSetting& config, ProxySetting setting);

/// What is shown as the value of a setting whose mode takes it from `config`, which is null where there is none:
/// `leaveWord` for a text that says to leave the setting alone.
std::wstring ShownValue(const std::shared_ptr<ConfigSetting>& config, ProxySetting setting,
                        const std::wstring& leaveWord);

/// Whether the user can enter values of his own for a setting.
bool CanEnterValues(bool overrides, wchar_t mode);

/// Stores a URL that the user has left in its field, of which at most the first 511 characters count. One that stands
/// there as it is stored is not touched, however long.
void StoreAutoUrl(const std::wstring& typed, ConfigSetting& config);
