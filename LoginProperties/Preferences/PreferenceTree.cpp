#include "LoginProperties/Preferences/PreferenceTree.h"

#include <initializer_list>

namespace {

using enum PreferenceId;

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
      CheckBoxes(StartGroup, kStartImage, {AutoConnect, MinimizeToTray, BypassHardwareRendering}),
      CheckBoxes(
          ConnectingGroup, kConnectionImage,
          {PreventMultiHoming, PreferIPv6, PromptForCredentialProvider, PromptForOnlineMode, ShowDetailedMessages}),
      CheckBoxes(ConnectedGroup, kConnectionImage,
                 {MinimizeMainWindow, MinimizeToTrayInsteadOfTaskbar, AppendDnsSuffixes}),
      CheckBoxes(ConfirmDisconnectGroup, kQuestionImage, {ConfirmOnDisconnect, ConfirmOnExit}),
      CheckBoxes(VpnGroup, kPadlockImage,
                 {UdpEncapsulation, VpnHealthCheck, SslTunnelBehindProxy, SslTunnelWithoutIPSec,
                  RegisterVpnAddressInDns, EphemeralIPSecPorts, DisableLocalSubnet, SslTunnelOnly}),
      CheckBoxes(PopupWarningGroup, kCautionImage, {WarnPasswordExpiry, WarnBrowserLogin}),
      Choice(HotspotMap, kGlobeImage, {HotspotMapBing, HotspotMapGoogle}),
      Choice(VpnMtu, kCautionImage, {VpnMtuDefault, VpnMtu1362, VpnMtu1300, VpnMtu1000, VpnMtu700}),
      Choice(IPSecAttempts, kCautionImage, {IPSecAttemptsDefault, IPSecAttempts1, IPSecAttempts2, IPSecAttempts3}),
  };
  if (hasSavedCertificate) {
    tree.push_back(CheckBoxes(CertificatesGroup, kGlobeImage, {UseSavedCertificate}));
    tree.back().entries.front().state = Preference::kOn;
  }
  return tree;
}
