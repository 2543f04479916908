#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <ratio>
#include <span>
#include <string>
#include <utility>

#include "Database/SQLite/SQLRecord.h"

/// The columns of a login profile with their defaults, in the order of every query. One-letter settings, the
/// password and the session token are the client's: they are carried, not interpreted.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): the order is that of the columns
struct ProfileColumns {
  uint32_t profileId = 0;  // the record's key
  std::wstring name;
  uint32_t linkProfile = 0;  // the profile that this one inherits from, 0 for none
  int32_t linkService = 0;   // id of the network service
  int32_t actualService = 0;
  std::wstring account;
  std::wstring userId;
  std::wstring encryptedPassword;
  bool savePassword = false;
  bool hideSavePassword = false;
  bool hidden = false;
  bool useSoftId = false;
  wchar_t dns1Setting = L'a';
  wchar_t dns2Setting = L'a';
  wchar_t domainNameSetting = L'a';
  wchar_t wins1Setting = L'a';
  wchar_t wins2Setting = L'a';
  wchar_t searchListSetting = L'n';
  wchar_t autoProxySetting = L'a';
  wchar_t manualProxySetting = L'a';
  wchar_t proxyExceptionsSetting = L'a';
  bool defaultPreferences = true;
  bool defaultTimeouts = true;
  bool defaultAutostart = true;
  bool defaultProxy = true;
  bool smUserMayOverrideAutoReconnectDefaults = true;
  bool overrideAutoReconnectDefaults = false;
  int32_t durationTime = 0;  // seconds; 0 or less: off
  bool thresholdOnOff = false;
  int32_t thresholdBytes = 0;
  int32_t thresholdTimeOut = 0;  // seconds; 0 or less: off
  int32_t warnTime = 0;          // seconds; 0 or less: off
  int32_t smIdleTime = 0;        // seconds; 0: no limit
  int32_t authProtocol = 0;
  std::wstring helpPhoneNumber;
  std::wstring helpUrl;
  std::wstring helpEMail;
  std::wstring helpdeskText;
  int32_t smSessionTime = 0;  // seconds; 0: no limit
  bool warnPasswordExpired = true;
  int32_t smThresholdTime = 0;   // minutes; 0: no limit
  int32_t smThresholdBytes = 0;  // 0: no limit
  int32_t defaultMtu = 0;
  bool allowAccessExceptions = false;
  bool allowLocalSubnetAccess = false;
  int32_t beforePollingFrequency = 0;
  int32_t afterPollingFrequency = 0;
  int32_t afterAllowedFailures = 0;
  std::wstring certIdOid;
  bool defaultVpnMobilityMode = false;
  bool overrideVpnMobilityMode = false;
  bool useOverrideVpnMobilityMode = false;
  bool vpnMobilityUsesDefaultRoute = false;
  int32_t firstVpnMobilityIface = 0;
  int32_t secondVpnMobilityIface = 0;
  int32_t thirdVpnMobilityIface = 0;
  int32_t fourthVpnMobilityIface = 0;
  bool discInetAfterVpnRoam = false;
  int32_t ipsecAttemptsBeforeSsl = 1;
  int32_t ipVersionAttempts = 0;
  bool autoReconnectInternet = false;
  bool smAutoReconnectMode = false;
  bool overrideARMode = false;
  bool smAutoSwitchWiFiMode = false;
  bool overrideASWiFiMode = false;
  bool smPromptUserToSwitch = false;
  bool overridePromptUserToSwitch = false;
  int32_t smSwitchInterval = 0;        // seconds
  int32_t overrideSwitchInterval = 0;  // seconds
  int32_t smSignalStrength = 0;        // percent
  int32_t overrideSignalStrength = 0;  // percent
  int32_t advancedAutoReconnectSettings = 0;
  bool credentialLessInternetProfile = false;
  int32_t asWiFiSelectionInSeconds = 0;
  bool asWiFiRememberSelection = false;
  std::wstring domain;
  std::wstring hexDigCertHash;
  std::wstring secondaryAuthCertHash;
  int32_t passwordAuthMethod = 0;
  int32_t passwordFormat = 0;
  int32_t savePwdDuration = 0;
  int32_t lastPwdTypedTime = 0;
  std::wstring authProviderClsid;
  std::wstring selectedTokenName;
  std::wstring sessionToken;
  int64_t stObtainedTimeInSeconds = 0;
  int32_t stLifeTime = 0;
  wchar_t stValidUnits = L'M';
  bool clearSTOnUserDisconnect = false;
  bool smLpeEnabled = true;
};

/// One login profile: a named set of connection settings. A stored profile holds only what differs from the
/// profile that it links to. Always held by a shared pointer; whoever changes it marks it with SetState.
class Profile : public SQLRecord {
 public:
  /// Time-outs as the pages calculate with them; the record stores 32 bits.
  using Seconds = std::chrono::duration<int64_t>;
  using Minutes = std::chrono::duration<int64_t, std::ratio<60>>;

  /// Asks for a fresh id when given to the constructor; never an id itself.
  static constexpr uint32_t kNewId = 10000;

  /// A profile with the defaults and the given id; kNewId takes the next id of the ProfileIdManager.
  explicit Profile(uint32_t id);

  std::span<const ColumnBinding> GetBindings() const override;

  /// Every column back to its default, the id to 0, before the record is loaded. The change state stays.
  void Reset() { columns_ = {}; }

  /// All columns, for those who load, make and store profiles. Pages use the accessors below.
  const ProfileColumns& Columns() const { return columns_; }
  ProfileColumns& Columns() { return columns_; }

  // The columns that pages show, and setters for those that pages change. Setters store the value only.

  uint32_t GetProfileId() const { return columns_.profileId; }
  std::wstring GetName() const { return columns_.name; }
  void SetName(std::wstring value) { columns_.name = std::move(value); }
  uint32_t GetLinkProfile() const { return columns_.linkProfile; }
  int32_t GetLinkService() const { return columns_.linkService; }
  void SetLinkService(int32_t value) { columns_.linkService = value; }
  std::wstring GetAccount() const { return columns_.account; }
  void SetAccount(std::wstring value) { columns_.account = std::move(value); }
  std::wstring GetUserId() const { return columns_.userId; }
  void SetUserId(std::wstring value) { columns_.userId = std::move(value); }
  bool GetHidden() const { return columns_.hidden; }
  void SetHidden(bool value) { columns_.hidden = value; }
  wchar_t GetAutoProxySetting() const { return columns_.autoProxySetting; }
  void SetAutoProxySetting(wchar_t value) { columns_.autoProxySetting = value; }
  wchar_t GetManualProxySetting() const { return columns_.manualProxySetting; }
  void SetManualProxySetting(wchar_t value) { columns_.manualProxySetting = value; }
  wchar_t GetProxyExceptionsSetting() const { return columns_.proxyExceptionsSetting; }
  void SetProxyExceptionsSetting(wchar_t value) { columns_.proxyExceptionsSetting = value; }
  bool GetDefaultPreferences() const { return columns_.defaultPreferences; }
  void SetDefaultPreferences(bool value) { columns_.defaultPreferences = value; }
  bool GetDefaultTimeouts() const { return columns_.defaultTimeouts; }
  void SetDefaultTimeouts(bool value) { columns_.defaultTimeouts = value; }
  bool GetDefaultAutostart() const { return columns_.defaultAutostart; }
  void SetDefaultAutostart(bool value) { columns_.defaultAutostart = value; }
  bool GetDefaultProxy() const { return columns_.defaultProxy; }
  void SetDefaultProxy(bool value) { columns_.defaultProxy = value; }
  bool GetSMUserMayOverrideAutoReconnectDefaults() const { return columns_.smUserMayOverrideAutoReconnectDefaults; }
  bool GetOverrideAutoReconnectDefaults() const { return columns_.overrideAutoReconnectDefaults; }
  void SetOverrideAutoReconnectDefaults(bool value) { columns_.overrideAutoReconnectDefaults = value; }
  Seconds GetDurationTime() const { return Seconds(columns_.durationTime); }
  void SetDurationTime(Seconds value) { columns_.durationTime = static_cast<int32_t>(value.count()); }
  bool GetThresholdOnOff() const { return columns_.thresholdOnOff; }
  void SetThresholdOnOff(bool value) { columns_.thresholdOnOff = value; }
  int32_t GetThresholdBytes() const { return columns_.thresholdBytes; }
  void SetThresholdBytes(int32_t value) { columns_.thresholdBytes = value; }
  Seconds GetThresholdTimeOut() const { return Seconds(columns_.thresholdTimeOut); }
  void SetThresholdTimeOut(Seconds value) { columns_.thresholdTimeOut = static_cast<int32_t>(value.count()); }
  Seconds GetWarnTime() const { return Seconds(columns_.warnTime); }
  void SetWarnTime(Seconds value) { columns_.warnTime = static_cast<int32_t>(value.count()); }
  Seconds GetSMIdleTime() const { return Seconds(columns_.smIdleTime); }
  Seconds GetSMSessionTime() const { return Seconds(columns_.smSessionTime); }
  Minutes GetSMThresholdTime() const { return Minutes(columns_.smThresholdTime); }
  int32_t GetSMThresholdBytes() const { return columns_.smThresholdBytes; }
  bool GetSMAutoReconnectMode() const { return columns_.smAutoReconnectMode; }
  bool GetOverrideARMode() const { return columns_.overrideARMode; }
  void SetOverrideARMode(bool value) { columns_.overrideARMode = value; }
  bool GetSMAutoSwitchWiFiMode() const { return columns_.smAutoSwitchWiFiMode; }
  bool GetOverrideASWiFiMode() const { return columns_.overrideASWiFiMode; }
  void SetOverrideASWiFiMode(bool value) { columns_.overrideASWiFiMode = value; }
  bool GetSMPromptUserToSwitch() const { return columns_.smPromptUserToSwitch; }
  bool GetOverridePromptUserToSwitch() const { return columns_.overridePromptUserToSwitch; }
  void SetOverridePromptUserToSwitch(bool value) { columns_.overridePromptUserToSwitch = value; }
  int32_t GetSMSwitchInterval() const { return columns_.smSwitchInterval; }
  int32_t GetOverrideSwitchInterval() const { return columns_.overrideSwitchInterval; }
  void SetOverrideSwitchInterval(int32_t value) { columns_.overrideSwitchInterval = value; }
  int32_t GetSMSignalStrength() const { return columns_.smSignalStrength; }
  int32_t GetOverrideSignalStrength() const { return columns_.overrideSignalStrength; }
  void SetOverrideSignalStrength(int32_t value) { columns_.overrideSignalStrength = value; }
  int32_t GetAdvancedAutoReconnectSettings() const { return columns_.advancedAutoReconnectSettings; }
  void SetAdvancedAutoReconnectSettings(int32_t value) { columns_.advancedAutoReconnectSettings = value; }
  std::wstring GetHexDigCertHash() const { return columns_.hexDigCertHash; }
  void SetHexDigCertHash(std::wstring value) { columns_.hexDigCertHash = std::move(value); }

  /// A pointer that the record carries for whoever uses it and never reads; not owned, null at first.
  void* GetAttachment() const { return attachment_; }
  void SetAttachment(void* attachment) { attachment_ = attachment; }

 private:
  ProfileColumns columns_;
  void* attachment_ = nullptr;
};

/// Profiles by their id.
using ProfileTable = std::map<uint32_t, std::shared_ptr<Profile>>;
