#include "Database/Profiles/Profile.h"

#include "Database/Profiles/ProfileIdManager.h"
#include "NetUtilities/Module/Singleton.h"

Profile::Profile(uint32_t id) {
  BindColumns();
  if (id != kNewId) {
    columns_.profileId = id;
  } else if (const auto ids = Singleton<ProfileIdManager>::Get()) {
    columns_.profileId = ids->NextId();
  }
}

Profile::Profile(const Profile& other) : SQLRecord(other), columns_(other.columns_), attachment_(other.attachment_) {
  BindColumns();
}

void Profile::BindColumns() {
  Bind(L"ProfileId", ColumnKind::Key, &columns_.profileId, 1);
  Bind(L"Name", ColumnKind::Text, &columns_.name, 1);
  Bind(L"LinkProfile", ColumnKind::ParentKey, &columns_.linkProfile);
  Bind(L"LinkService", ColumnKind::Integer32, &columns_.linkService);
  Bind(L"ActualService", ColumnKind::Integer32, &columns_.actualService);
  Bind(L"Account", ColumnKind::Text, &columns_.account);
  Bind(L"UserId", ColumnKind::Text, &columns_.userId);
  Bind(L"EncryptedPassword", ColumnKind::Text, &columns_.encryptedPassword);
  Bind(L"SavePassword", ColumnKind::Boolean, &columns_.savePassword);
  Bind(L"HideSavePassword", ColumnKind::Boolean, &columns_.hideSavePassword);
  Bind(L"Hidden", ColumnKind::Boolean, &columns_.hidden);
  Bind(L"UseSoftID", ColumnKind::Boolean, &columns_.useSoftId);
  Bind(L"DNS1Setting", ColumnKind::Character, &columns_.dns1Setting);
  Bind(L"DNS2Setting", ColumnKind::Character, &columns_.dns2Setting);
  Bind(L"DomainNameSetting", ColumnKind::Character, &columns_.domainNameSetting);
  Bind(L"WINS1Setting", ColumnKind::Character, &columns_.wins1Setting);
  Bind(L"WINS2Setting", ColumnKind::Character, &columns_.wins2Setting);
  Bind(L"SearchListSetting", ColumnKind::Character, &columns_.searchListSetting);
  Bind(L"AutoProxySetting", ColumnKind::Character, &columns_.autoProxySetting);
  Bind(L"ManualProxySetting", ColumnKind::Character, &columns_.manualProxySetting);
  Bind(L"ProxyExceptionsSetting", ColumnKind::Character, &columns_.proxyExceptionsSetting);
  Bind(L"DefaultPreferences", ColumnKind::Boolean, &columns_.defaultPreferences);
  Bind(L"DefaultTimeouts", ColumnKind::Boolean, &columns_.defaultTimeouts);
  Bind(L"DefaultAutostart", ColumnKind::Boolean, &columns_.defaultAutostart);
  Bind(L"DefaultProxy", ColumnKind::Boolean, &columns_.defaultProxy);
  Bind(L"SMUserMayOverrideAutoReconnectDefaults", ColumnKind::Boolean,
       &columns_.smUserMayOverrideAutoReconnectDefaults);
  Bind(L"OverrideAutoReconnectDefaults", ColumnKind::Boolean, &columns_.overrideAutoReconnectDefaults);
  Bind(L"DurationTime", ColumnKind::Integer32, &columns_.durationTime);
  Bind(L"ThresholdOnOff", ColumnKind::Boolean, &columns_.thresholdOnOff);
  Bind(L"ThresholdBytes", ColumnKind::Integer32, &columns_.thresholdBytes);
  Bind(L"ThresholdTimeOut", ColumnKind::Integer32, &columns_.thresholdTimeOut);
  Bind(L"WarnTime", ColumnKind::Integer32, &columns_.warnTime);
  Bind(L"SMIdleTime", ColumnKind::Integer32, &columns_.smIdleTime);
  Bind(L"AuthProtocol", ColumnKind::Integer32, &columns_.authProtocol);
  Bind(L"HelpPhoneNumber", ColumnKind::Text, &columns_.helpPhoneNumber);
  Bind(L"HelpURL", ColumnKind::Text, &columns_.helpUrl);
  Bind(L"HelpEMail", ColumnKind::Text, &columns_.helpEMail);
  Bind(L"HelpdeskText", ColumnKind::Text, &columns_.helpdeskText);
  Bind(L"SMSessionTime", ColumnKind::Integer32, &columns_.smSessionTime);
  Bind(L"WarnPasswordExpired", ColumnKind::Boolean, &columns_.warnPasswordExpired);
  Bind(L"SMThresholdTime", ColumnKind::Integer32, &columns_.smThresholdTime);
  Bind(L"SMThresholdBytes", ColumnKind::Integer32, &columns_.smThresholdBytes);
  Bind(L"DefaultMTU", ColumnKind::Integer32, &columns_.defaultMtu);
  Bind(L"AllowAccessExceptions", ColumnKind::Boolean, &columns_.allowAccessExceptions);
  Bind(L"AllowLocalSubnetAccess", ColumnKind::Boolean, &columns_.allowLocalSubnetAccess);
  Bind(L"BeforePollingFrequency", ColumnKind::Integer32, &columns_.beforePollingFrequency);
  Bind(L"AfterPollingFrequency", ColumnKind::Integer32, &columns_.afterPollingFrequency);
  Bind(L"AfterAllowedFailures", ColumnKind::Integer32, &columns_.afterAllowedFailures);
  Bind(L"CertIdOID", ColumnKind::Text, &columns_.certIdOid);
  Bind(L"DefaultVpnMobilityMode", ColumnKind::Boolean, &columns_.defaultVpnMobilityMode);
  Bind(L"OverrideVpnMobilityMode", ColumnKind::Boolean, &columns_.overrideVpnMobilityMode);
  Bind(L"UseOverrideVpnMobilityMode", ColumnKind::Boolean, &columns_.useOverrideVpnMobilityMode);
  Bind(L"VpnMobilityUsesDefaultRoute", ColumnKind::Boolean, &columns_.vpnMobilityUsesDefaultRoute);
  Bind(L"FirstVpnMobilityIface", ColumnKind::Integer32, &columns_.firstVpnMobilityIface);
  Bind(L"SecondVpnMobilityIface", ColumnKind::Integer32, &columns_.secondVpnMobilityIface);
  Bind(L"ThirdVpnMobilityIface", ColumnKind::Integer32, &columns_.thirdVpnMobilityIface);
  Bind(L"FourthVpnMobilityIface", ColumnKind::Integer32, &columns_.fourthVpnMobilityIface);
  Bind(L"DiscInetAfterVpnRoam", ColumnKind::Boolean, &columns_.discInetAfterVpnRoam);
  Bind(L"IPSecAttemptsBeforeSSL", ColumnKind::Integer32, &columns_.ipsecAttemptsBeforeSsl);
  Bind(L"IpVersionAttempts", ColumnKind::Integer32, &columns_.ipVersionAttempts);
  Bind(L"AutoReconnectInternet", ColumnKind::Boolean, &columns_.autoReconnectInternet);
  Bind(L"SMAutoReconnectMode", ColumnKind::Boolean, &columns_.smAutoReconnectMode);
  Bind(L"OverrideARMode", ColumnKind::Boolean, &columns_.overrideARMode);
  Bind(L"SMAutoSwitchWiFiMode", ColumnKind::Boolean, &columns_.smAutoSwitchWiFiMode);
  Bind(L"OverrideASWiFiMode", ColumnKind::Boolean, &columns_.overrideASWiFiMode);
  Bind(L"SMPromptUserToSwitch", ColumnKind::Boolean, &columns_.smPromptUserToSwitch);
  Bind(L"OverridePromptUserToSwitch", ColumnKind::Boolean, &columns_.overridePromptUserToSwitch);
  Bind(L"SMSwitchInterval", ColumnKind::Integer32, &columns_.smSwitchInterval);
  Bind(L"OverrideSwitchInterval", ColumnKind::Integer32, &columns_.overrideSwitchInterval);
  Bind(L"SMSignalStrength", ColumnKind::Integer32, &columns_.smSignalStrength);
  Bind(L"OverrideSignalStrength", ColumnKind::Integer32, &columns_.overrideSignalStrength);
  Bind(L"AdvancedAutoReconnectSettings", ColumnKind::Integer32, &columns_.advancedAutoReconnectSettings);
  Bind(L"CredentialLessInternetProfile", ColumnKind::Boolean, &columns_.credentialLessInternetProfile);
  Bind(L"ASWiFiSelectionInSeconds", ColumnKind::Integer32, &columns_.asWiFiSelectionInSeconds);
  Bind(L"ASWiFiRememberSelection", ColumnKind::Boolean, &columns_.asWiFiRememberSelection);
  Bind(L"Domain", ColumnKind::Text, &columns_.domain);
  Bind(L"HexDigCertHash", ColumnKind::Text, &columns_.hexDigCertHash);
  Bind(L"SecondaryAuthCertHash", ColumnKind::Text, &columns_.secondaryAuthCertHash);
  Bind(L"PasswordAuthMethod", ColumnKind::Integer32, &columns_.passwordAuthMethod);
  Bind(L"PasswordFormat", ColumnKind::Integer32, &columns_.passwordFormat);
  Bind(L"SavePwdDuration", ColumnKind::Integer32, &columns_.savePwdDuration);
  Bind(L"LastPwdTypedTime", ColumnKind::Integer32, &columns_.lastPwdTypedTime);
  Bind(L"AuthProviderCLSID", ColumnKind::Text, &columns_.authProviderClsid);
  Bind(L"SelectedTokenName", ColumnKind::Text, &columns_.selectedTokenName);
  Bind(L"SessionToken", ColumnKind::Text, &columns_.sessionToken);
  Bind(L"STObtainedTimeInSeconds", ColumnKind::Integer64, &columns_.stObtainedTimeInSeconds);
  Bind(L"STLifeTime", ColumnKind::Integer32, &columns_.stLifeTime);
  Bind(L"STValidUnits", ColumnKind::Character, &columns_.stValidUnits);
  Bind(L"ClearSTOnUserDisconnect", ColumnKind::Boolean, &columns_.clearSTOnUserDisconnect);
  Bind(L"SmLpeEnabled", ColumnKind::Boolean, &columns_.smLpeEnabled);
}
