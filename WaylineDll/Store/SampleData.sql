-- What a new settings database holds, so that the client can be tried without an administrator's server. Ids up to 2000
-- are defaults that an administrator made and that user profiles are linked to.
INSERT INTO Services (ServiceId, Name, DisplayText) VALUES
  (400, 'standard', 'Standard Access'),
  (401, 'secure', 'Secure Tunnel'),
  (402, 'guest', 'Guest Internet');

-- The defaults that everyone gets: moderate limits.
INSERT INTO Profiles (ProfileId, Name, LinkProfile, LinkService, Account, DurationTime, ThresholdOnOff, ThresholdBytes,
    ThresholdTimeOut, WarnTime, SMIdleTime, SMSessionTime, SMThresholdTime, SMThresholdBytes, HelpPhoneNumber, HelpURL,
    HelpEMail, HelpdeskText, SMUserMayOverrideAutoReconnectDefaults, SMAutoReconnectMode, SMAutoSwitchWiFiMode,
    SMPromptUserToSwitch, SMSwitchInterval, SMSignalStrength, DefaultMTU, IPSecAttemptsBeforeSSL) VALUES
  (1, 'default custom', NULL, 400, 'Example Company', 14400, 1, 1000, 600, 60, 3600, 28800, 30, 50, '+1 555 0100',
    'https://help.example.com', 'help@example.com', 'The help desk answers on weekdays.', 1, 1, 1, 1, 30, 60, 1400, 1);

-- Custom defaults with tight limits and a fixed Wi-Fi behaviour.
INSERT INTO Profiles (ProfileId, Name, LinkProfile, LinkService, Account, DurationTime, ThresholdOnOff, ThresholdBytes,
    ThresholdTimeOut, WarnTime, SMIdleTime, SMSessionTime, SMThresholdTime, SMThresholdBytes,
    SMUserMayOverrideAutoReconnectDefaults, SMAutoReconnectMode, SMSwitchInterval, SMSignalStrength) VALUES
  (100, 'Field Service', 0, 401, 'Example Field', 1800, 0, 1000, -600, 30, 120, 1800, 10, 1000, 0, 1, 60, 70);

-- Custom defaults of the last id that defaults can have. They follow those of id 1 in everything but the limits, which
-- they lift.
INSERT INTO Profiles (ProfileId, Name, LinkProfile, Account, SMIdleTime, SMSessionTime, SMThresholdTime,
    SMThresholdBytes) VALUES
  (2000, 'Branch Offices', 1, 'Example Branches', 0, 0, 0, 0);

-- Follows the defaults everywhere.
INSERT INTO Profiles (ProfileId, Name, LinkProfile, UserId) VALUES
  (2001, 'Work', 1, 'a.sample');

-- Time-outs of its own, within the limits of its defaults.
INSERT INTO Profiles (ProfileId, Name, LinkProfile, UserId, DefaultTimeouts, DurationTime, ThresholdOnOff,
    ThresholdBytes, ThresholdTimeOut, WarnTime) VALUES
  (2002, 'Work 2', 100, 'a.sample', 0, 1200, 1, 5000, 300, 60);

-- Wi-Fi switching of its own, and a password that is kept.
INSERT INTO Profiles (ProfileId, Name, LinkProfile, LinkService, UserId, SavePassword, OverrideAutoReconnectDefaults,
    OverrideARMode, OverrideASWiFiMode, OverridePromptUserToSwitch, OverrideSwitchInterval, OverrideSignalStrength,
    AdvancedAutoReconnectSettings) VALUES
  (2003, 'Travel', 2000, 402, 'traveller', 1, 1, 1, 1, 0, 15, 40, 1);

-- Preferences, autostart entries and proxies of its own. The rules for the warning and the threshold are switched off
-- and remember their values.
INSERT INTO Profiles (ProfileId, Name, LinkProfile, UserId, DefaultPreferences, DefaultTimeouts, DefaultAutostart,
    DefaultProxy, AutoProxySetting, ManualProxySetting, ProxyExceptionsSetting, DurationTime, ThresholdOnOff,
    ThresholdTimeOut, WarnTime) VALUES
  (2004, 'Zürich Office', 2000, 'z.sample', 0, 0, 0, 0, 'n', 'm', 'm', 7200, 0, -900, -120);

-- Not offered to the user.
INSERT INTO Profiles (ProfileId, Name, LinkProfile, Hidden) VALUES
  (2005, 'Retired Line', 1, 1);

-- With this id it shows the preferences of its defaults even though it has rows of its own.
INSERT INTO Profiles (ProfileId, Name, LinkProfile, UserId, DefaultPreferences) VALUES
  (10001, 'Visitor', 100, 'visitor', 0);

INSERT INTO ClientState (Name, Value) VALUES
  ('ActiveProfile', '2001'), ('ConnectionState', '0'), ('ProxyLocation', '0');

-- 8 shows the servers of the General page.
INSERT INTO Bookmarks (BookmarkId, Value) VALUES
  (8, '1');

-- State 1 is off, 2 is on; 1082, 1477 and 1507 hold the chosen option.
INSERT INTO Preferences (ProfileId, PreferenceId, State, Visible, IPSecRequired) VALUES
  (1, 1014, 1, 1, 0), (1, 1016, 2, 1, 0), (1, 1017, 1, 1, 0), (1, 1018, 2, 1, 0), (1, 1019, 2, 1, 0),
  (1, 1021, 1, 1, 0), (1, 1044, 2, 1, 1), (1, 1057, 2, 1, 0), (1, 1060, 1, 1, 0), (1, 1082, 1083, 1, 0),
  (1, 1477, 1478, 1, 1), (1, 1483, 1, 1, 0), (1, 1485, 2, 1, 0), (1, 1486, 1, 1, 0), (1, 1487, 2, 1, 0),
  (1, 1488, 2, 1, 1), (1, 1489, 1, 1, 0), (1, 1492, 1, 1, 1), (1, 1501, 1, 1, 0), (1, 1502, 1, 1, 0),
  (1, 1504, 1, 1, 0), (1, 1505, 1, 1, 0), (1, 1506, 1, 1, 0), (1, 1507, 1508, 1, 1), (1, 1514, 1, 1, 0),
  (1, 1518, 1, 1, 0), (1, 1522, 2, 1, 0);

-- Custom defaults: a smaller MTU, more attempts, another map.
INSERT INTO Preferences (ProfileId, PreferenceId, State, Visible, IPSecRequired)
  SELECT 100, PreferenceId,
    CASE PreferenceId WHEN 1082 THEN 1520 WHEN 1477 THEN 1480 WHEN 1507 THEN 1511 WHEN 1505 THEN 2 ELSE State END,
    Visible, IPSecRequired
  FROM Preferences WHERE ProfileId = 1;

INSERT INTO Preferences (ProfileId, PreferenceId, State, Visible, IPSecRequired)
  SELECT 2000, PreferenceId, State, Visible, IPSecRequired FROM Preferences WHERE ProfileId = 1;

-- A user's own: connects by itself and stays in the tray.
INSERT INTO Preferences (ProfileId, PreferenceId, State, Visible, IPSecRequired)
  SELECT 2004, PreferenceId, CASE WHEN PreferenceId IN (1014, 1021, 1501, 1514) THEN 2 ELSE State END, Visible,
    IPSecRequired
  FROM Preferences WHERE ProfileId = 1;

INSERT INTO Preferences (ProfileId, PreferenceId, State, Visible, IPSecRequired) VALUES
  (10001, 1014, 2, 1, 0), (10001, 1477, 1482, 1, 1);

-- Each list has the headers of all phases; some phases have no program.
INSERT INTO AutoStart (ProfileId, Phase, ItemOrder, RecordType, Name, Modifiable, Program, Parameters, Directory,
    DirectoryRegistryKey, ShowAdvanced, InitialSize, ReconnectOption, ConnectionOption, DelaySeconds, WaitMode,
    DefinitionLocked)
  WITH Header(Phase, Title) AS (VALUES
    (300, 'Before connecting'),
    (700, 'After the network is connected'),
    (1100, 'After the VPN is connected'),
    (1600, 'After disconnecting')),
  Owner(Id) AS (VALUES (1), (100), (2000), (2004))
  SELECT Owner.Id, Phase, 0, 1, Title, 0, '', '', '', '', 0, 0, 0, 0, 0, 0, 1 FROM Owner, Header;

INSERT INTO AutoStart (ProfileId, Phase, ItemOrder, RecordType, Name, Modifiable, Program, Parameters, Directory,
    DirectoryRegistryKey, ShowAdvanced, InitialSize, ReconnectOption, ConnectionOption, DelaySeconds, WaitMode,
    DefinitionLocked) VALUES
  (1, 300, 1, 2, 'Device check', 0, 'C:\Tools\devicecheck.exe', '/quiet', 'C:\Tools', '', 0, 2, 1, 1, 120, 3, 1),
  (1, 1100, 1, 2, 'Company portal', 1, 'C:\Windows\explorer.exe', 'https://portal.example.com', '', '', 0, 0, 0, 0, 0, 0, 0),
  (100, 1100, 1, 2, 'Work orders', 0, 'C:\Tools\orders.exe', '', '', 'HKEY_LOCAL_MACHINE\Software\Example\Orders\Path',
    1, 1, 2, 2, 30, 1, 0),
  (2000, 1600, 1, 2, 'Clean up', 1, 'C:\Tools\cleanup.exe', '', '%windir%', '', 1, 2, 1, 0, 0, 0, 0),
  (2004, 300, 1, 2, 'Device check', 0, 'C:\Tools\devicecheck.exe', '/quiet', 'C:\Tools', '', 0, 2, 1, 1, 120, 3, 1),
  (2004, 700, 1, 2, 'Notes', 1, 'C:\Windows\notepad.exe', '', '%userdir%', '', 0, 0, 0, 0, 10, 1, 0),
  (2004, 700, 2, 2, 'Calculator', 1, 'C:\Windows\System32\calc.exe', '', '', '', 1, 1, 2, 2, 300, 2, 0),
  (2004, 1600, 1, 2, 'Goodbye', 1, 'C:\Windows\notepad.exe', '%Desktop%\goodbye.txt', '', '', 0, 0, 0, 0, 0, 0, 0);

INSERT INTO ConfigSettings (ProfileId, Automatic, AutoProxyUrl, ManualProxy, ProxyExceptions, Dns1, Dns2, Wins1, Wins2,
    DomainName, SearchList) VALUES
  (1, 1, 'http://wpad.example.com/wpad.dat', 'proxy.example.com:8080', '*.example.com', '192.0.2.53', '192.0.2.54',
    '192.0.2.60', '', 'example.com', 'example.com'),
  (1, 0, '', '', '', '', '', '', '', '', ''),
  (2001, 1, 'http://wpad.example.com/wpad.dat', 'proxy.example.com:8080', 'leave', '192.0.2.53', '192.0.2.54', '', '',
    'example.com', 'example.com'),
  (2004, 1, 'leave', 'proxy.example.net:3128', '*.example.net', '198.51.100.53', '', '', '', 'example.net', ''),
  (2004, 0, 'http://proxy.example.net/office.pac', 'proxy1.example.net:3128;proxy2.example.net:3128',
    'intranet.example.net;192.0.2.0', '198.51.100.53', '198.51.100.54', '', '', 'example.net',
    'example.net,example.com');
