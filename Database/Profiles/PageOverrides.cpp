#include "Database/Profiles/PageOverrides.h"

#include <array>

namespace {

constexpr std::wstring_view kTimeouts[] = {L"DefaultTimeouts", L"DurationTime",     L"ThresholdOnOff",
                                           L"ThresholdBytes",  L"ThresholdTimeOut", L"WarnTime"};

constexpr std::wstring_view kProxy[] = {L"DefaultProxy", L"AutoProxySetting", L"ManualProxySetting",
                                        L"ProxyExceptionsSetting"};

constexpr std::wstring_view kWiFiSwitching[] = {
    L"OverrideAutoReconnectDefaults", L"OverrideARMode",         L"OverrideASWiFiMode",
    L"OverridePromptUserToSwitch",    L"OverrideSwitchInterval", L"OverrideSignalStrength",
    L"AdvancedAutoReconnectSettings"};

constexpr std::wstring_view kPreferences[] = {L"DefaultPreferences"};

constexpr std::wstring_view kAutostart[] = {L"DefaultAutostart"};

constexpr std::array<PageOverride, 5> kPages = {{
    {[](const Profile& profile) { return !profile.GetDefaultTimeouts(); }, kTimeouts},
    {[](const Profile& profile) { return !profile.GetDefaultProxy(); }, kProxy},
    {[](const Profile& profile) { return profile.GetOverrideAutoReconnectDefaults(); }, kWiFiSwitching},
    {[](const Profile& profile) { return !profile.GetDefaultPreferences(); }, kPreferences},
    {[](const Profile& profile) { return !profile.GetDefaultAutostart(); }, kAutostart},
}};

}  // namespace

std::span<const PageOverride> PageOverrides() { return kPages; }

bool CanOwnPreferences(uint32_t profileId) { return profileId <= Profile::kNewId; }
