#pragma once

#include <cstdint>

/// The client's preferences, the groups that they are shown in and the options of its choices. Each value is
/// also the number of the label in the module's string table.
enum class PreferenceId : int32_t {
  AutoConnect = 1014,
  ShowDetailedMessages = 1016,
  MinimizeMainWindow = 1017,
  ConfirmOnDisconnect = 1018,
  ConfirmOnExit = 1019,
  MinimizeToTrayInsteadOfTaskbar = 1021,
  StartGroup = 1026,
  ConnectingGroup = 1027,
  ConnectedGroup = 1028,
  ConfirmDisconnectGroup = 1029,
  VpnGroup = 1030,
  PopupWarningGroup = 1031,
  UdpEncapsulation = 1044,
  WarnPasswordExpiry = 1057,
  WarnBrowserLogin = 1060,
  HotspotMap = 1082,      // choice
  HotspotMapBing = 1083,  // option of HotspotMap
  VpnMtu = 1477,          // choice
  VpnMtuDefault = 1478,   // options of VpnMtu
  VpnMtu1362 = 1479,
  VpnMtu1300 = 1480,
  VpnMtu1000 = 1481,
  VpnMtu700 = 1482,
  VpnHealthCheck = 1483,
  PromptForOnlineMode = 1485,
  AppendDnsSuffixes = 1486,
  SslTunnelBehindProxy = 1487,
  SslTunnelWithoutIPSec = 1488,
  RegisterVpnAddressInDns = 1489,
  EphemeralIPSecPorts = 1492,
  MinimizeToTray = 1501,
  PromptForCredentialProvider = 1502,
  PreventMultiHoming = 1504,
  DisableLocalSubnet = 1505,
  SslTunnelOnly = 1506,
  IPSecAttempts = 1507,         // choice
  IPSecAttemptsDefault = 1508,  // options of IPSecAttempts
  IPSecAttempts1 = 1509,
  IPSecAttempts2 = 1510,
  IPSecAttempts3 = 1511,
  PreferIPv6 = 1514,
  BypassHardwareRendering = 1518,
  HotspotMapGoogle = 1520,  // option of HotspotMap
  CertificatesGroup = 1521,
  UseSavedCertificate = 1522,
};
