#include "Database/Profiles/BuiltInPreferences.h"

#include "Database/Profiles/Preference.h"

namespace {

constexpr int32_t kNothingChosen = 0;

constexpr BuiltInPreference kPreferences[] = {
    {PreferenceId::AutoConnect, Preference::kOff},
    {PreferenceId::ShowDetailedMessages, Preference::kOff},
    {PreferenceId::MinimizeMainWindow, Preference::kOff},
    {PreferenceId::ConfirmOnDisconnect, Preference::kOff},
    {PreferenceId::ConfirmOnExit, Preference::kOff},
    {PreferenceId::MinimizeToTrayInsteadOfTaskbar, Preference::kOff},
    {PreferenceId::UdpEncapsulation, Preference::kOff},
    {PreferenceId::WarnPasswordExpiry, Preference::kOff},
    {PreferenceId::WarnBrowserLogin, Preference::kOff},
    {PreferenceId::HotspotMap, kNothingChosen},
    {PreferenceId::VpnMtu, kNothingChosen},
    {PreferenceId::VpnHealthCheck, Preference::kOff},
    {PreferenceId::PromptForOnlineMode, Preference::kOff},
    {PreferenceId::AppendDnsSuffixes, Preference::kOff},
    {PreferenceId::SslTunnelBehindProxy, Preference::kOff},
    {PreferenceId::SslTunnelWithoutIPSec, Preference::kOff},
    {PreferenceId::RegisterVpnAddressInDns, Preference::kOff},
    {PreferenceId::EphemeralIPSecPorts, Preference::kOff},
    {PreferenceId::MinimizeToTray, Preference::kOff},
    {PreferenceId::PromptForCredentialProvider, Preference::kOff},
    {PreferenceId::PreventMultiHoming, Preference::kOff},
    {PreferenceId::DisableLocalSubnet, Preference::kOff},
    {PreferenceId::SslTunnelOnly, Preference::kOff},
    {PreferenceId::IPSecAttempts, kNothingChosen},
    {PreferenceId::PreferIPv6, Preference::kOff},
    {PreferenceId::BypassHardwareRendering, Preference::kOff},
    {PreferenceId::UseSavedCertificate, Preference::kOn},
};

}  // namespace

std::span<const BuiltInPreference> BuiltInPreferences() { return kPreferences; }
