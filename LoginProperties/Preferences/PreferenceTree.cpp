#include "LoginProperties/Preferences/PreferenceTree.h"

#include <initializer_list>

namespace {

using enum PreferenceId;

// Cells of the strip of state images.
constexpr int kCaution = 3;
constexpr int kPadlock = 4;
constexpr int kConnection = 5;
constexpr int kQuestion = 9;
constexpr int kStart = 12;
constexpr int kGlobe = 13;

PreferenceGroup MakeGroup(PreferenceId id, GroupKind kind, int headingImage,
                          std::initializer_list<PreferenceId> entryIds) {
  PreferenceGroup group{.id = id, .kind = kind, .headingImage = headingImage};
  const EntryKind entryKind = kind == GroupKind::Choice ? EntryKind::RadioOption : EntryKind::CheckBox;
  for (const PreferenceId entryId : entryIds) group.entries.push_back({.id = entryId, .kind = entryKind});
  return group;
}

PreferenceGroup CheckBoxes(PreferenceId id, int headingImage, std::initializer_list<PreferenceId> preferences) {
  return MakeGroup(id, GroupKind::CheckBoxes, headingImage, preferences);
}

PreferenceGroup Choice(PreferenceId preference, int headingImage, std::initializer_list<PreferenceId> options) {
  return MakeGroup(preference, GroupKind::Choice, headingImage, options);
}

}  // namespace

PreferenceTree MakePreferenceTree(bool hasSavedCertificate) {
  PreferenceTree tree = {
      CheckBoxes(StartGroup, kStart, {AutoConnect, MinimizeToTray, BypassHardwareRendering}),
      CheckBoxes(
          ConnectingGroup, kConnection,
          {PreventMultiHoming, PreferIPv6, PromptForCredentialProvider, PromptForOnlineMode, ShowDetailedMessages}),
      CheckBoxes(ConnectedGroup, kConnection, {MinimizeMainWindow, MinimizeToTrayInsteadOfTaskbar, AppendDnsSuffixes}),
      CheckBoxes(ConfirmDisconnectGroup, kQuestion, {ConfirmOnDisconnect, ConfirmOnExit}),
      CheckBoxes(VpnGroup, kPadlock,
                 {UdpEncapsulation, VpnHealthCheck, SslTunnelBehindProxy, SslTunnelWithoutIPSec,
                  RegisterVpnAddressInDns, EphemeralIPSecPorts, DisableLocalSubnet, SslTunnelOnly}),
      CheckBoxes(PopupWarningGroup, kCaution, {WarnPasswordExpiry, WarnBrowserLogin}),
      Choice(HotspotMap, kGlobe, {HotspotMapBing, HotspotMapGoogle}),
      Choice(VpnMtu, kCaution, {VpnMtuDefault, VpnMtu1362, VpnMtu1300, VpnMtu1000, VpnMtu700}),
      Choice(IPSecAttempts, kCaution, {IPSecAttemptsDefault, IPSecAttempts1, IPSecAttempts2, IPSecAttempts3}),
  };
  if (hasSavedCertificate) {
    tree.push_back(CheckBoxes(CertificatesGroup, kGlobe, {UseSavedCertificate}));
    tree.back().entries.front().state = Preference::kOn;
  }
  return tree;
}
