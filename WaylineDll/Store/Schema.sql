-- The settings database of the client. The application id spells "WAYL"; the version rises with every change, and each
-- has an upgrade beside this file that leads a database of the version before to it.
PRAGMA application_id = 0x5741594C;
PRAGMA user_version = 2;

-- Login profiles. A profile stores only what differs from the profile that LinkProfile names: NULL means "as there", and
-- in a profile without a parent (LinkProfile NULL or 0) the client's default. Columns are named and ordered as the
-- client's profile record. Times are seconds unless their column says otherwise; flags are 0 or 1.
CREATE TABLE Profiles (
  -- 10000 asks the client for a fresh id and is never an id itself.
  ProfileId INTEGER PRIMARY KEY NOT NULL CHECK (ProfileId BETWEEN 1 AND 2147483647 AND ProfileId <> 10000),
  Name TEXT NOT NULL,
  LinkProfile INTEGER,
  LinkService INTEGER,
  ActualService INTEGER,
  Account TEXT,
  UserId TEXT,
  EncryptedPassword TEXT,
  SavePassword INTEGER,
  HideSavePassword INTEGER,
  Hidden INTEGER,
  UseSoftID INTEGER,
  DNS1Setting TEXT,
  DNS2Setting TEXT,
  DomainNameSetting TEXT,
  WINS1Setting TEXT,
  WINS2Setting TEXT,
  SearchListSetting TEXT,
  AutoProxySetting TEXT,
  ManualProxySetting TEXT,
  ProxyExceptionsSetting TEXT,
  DefaultPreferences INTEGER,
  DefaultTimeouts INTEGER,
  DefaultAutostart INTEGER,
  DefaultProxy INTEGER,
  SMUserMayOverrideAutoReconnectDefaults INTEGER,
  OverrideAutoReconnectDefaults INTEGER,
  DurationTime INTEGER,
  ThresholdOnOff INTEGER,
  ThresholdBytes INTEGER,
  ThresholdTimeOut INTEGER,
  WarnTime INTEGER,
  SMIdleTime INTEGER,
  AuthProtocol INTEGER,
  HelpPhoneNumber TEXT,
  HelpURL TEXT,
  HelpEMail TEXT,
  HelpdeskText TEXT,
  SMSessionTime INTEGER,
  WarnPasswordExpired INTEGER,
  SMThresholdTime INTEGER, -- minutes
  SMThresholdBytes INTEGER,
  DefaultMTU INTEGER,
  AllowAccessExceptions INTEGER,
  AllowLocalSubnetAccess INTEGER,
  BeforePollingFrequency INTEGER,
  AfterPollingFrequency INTEGER,
  AfterAllowedFailures INTEGER,
  CertIdOID TEXT,
  DefaultVpnMobilityMode INTEGER,
  OverrideVpnMobilityMode INTEGER,
  UseOverrideVpnMobilityMode INTEGER,
  VpnMobilityUsesDefaultRoute INTEGER,
  FirstVpnMobilityIface INTEGER,
  SecondVpnMobilityIface INTEGER,
  ThirdVpnMobilityIface INTEGER,
  FourthVpnMobilityIface INTEGER,
  DiscInetAfterVpnRoam INTEGER,
  IPSecAttemptsBeforeSSL INTEGER,
  IpVersionAttempts INTEGER,
  AutoReconnectInternet INTEGER,
  SMAutoReconnectMode INTEGER,
  OverrideARMode INTEGER,
  SMAutoSwitchWiFiMode INTEGER,
  OverrideASWiFiMode INTEGER,
  SMPromptUserToSwitch INTEGER,
  OverridePromptUserToSwitch INTEGER,
  SMSwitchInterval INTEGER,
  OverrideSwitchInterval INTEGER,
  SMSignalStrength INTEGER, -- percent
  OverrideSignalStrength INTEGER, -- percent
  AdvancedAutoReconnectSettings INTEGER,
  CredentialLessInternetProfile INTEGER,
  ASWiFiSelectionInSeconds INTEGER,
  ASWiFiRememberSelection INTEGER,
  Domain TEXT,
  HexDigCertHash TEXT,
  SecondaryAuthCertHash TEXT,
  PasswordAuthMethod INTEGER,
  PasswordFormat INTEGER,
  SavePwdDuration INTEGER,
  LastPwdTypedTime INTEGER,
  AuthProviderCLSID TEXT,
  SelectedTokenName TEXT,
  SessionToken TEXT,
  STObtainedTimeInSeconds INTEGER,
  STLifeTime INTEGER,
  STValidUnits TEXT,
  ClearSTOnUserDisconnect INTEGER,
  SmLpeEnabled INTEGER
) STRICT;

CREATE INDEX ProfilesByParent ON Profiles (LinkProfile);

-- Switches and choices of a profile.
CREATE TABLE Preferences (
  PreferenceId INTEGER NOT NULL,
  ProfileId INTEGER NOT NULL,
  State INTEGER NOT NULL, -- 1 off, 2 on; in a choice the PreferenceId of the chosen option
  Visible INTEGER NOT NULL,
  IPSecRequired INTEGER NOT NULL,
  PRIMARY KEY (ProfileId, PreferenceId)
) STRICT;

-- Programs and documents that are started around a connection, and the headers of the phases that they start in.
CREATE TABLE AutoStart (
  Id INTEGER PRIMARY KEY NOT NULL,
  ProfileId INTEGER NOT NULL,
  Phase INTEGER NOT NULL, -- 300 is the first phase, 1600 the last
  ItemOrder INTEGER NOT NULL, -- from 1 within a phase; 0 for its header
  RecordType INTEGER NOT NULL, -- 1 phase header, 2 program
  Name TEXT NOT NULL,
  Modifiable INTEGER, -- 0 when set by the administrator
  Program TEXT,
  Parameters TEXT,
  Directory TEXT,
  DirectoryRegistryKey TEXT,
  ShowAdvanced INTEGER,
  InitialSize INTEGER, -- 0 normal, 1 maximized, 2 minimized
  ReconnectOption INTEGER, -- 0 ask, 1 do not restart, 2 always restart
  ConnectionOption INTEGER, -- 0 none, 1 disconnect, 2 prompt when the program ends
  DelaySeconds INTEGER,
  WaitMode INTEGER,
  DefinitionLocked INTEGER
) STRICT;

CREATE INDEX AutoStartByProfile ON AutoStart (ProfileId);

-- Proxies and servers of a profile: what the client found (Automatic 1) and what the user entered (Automatic 0).
CREATE TABLE ConfigSettings (
  ConfigId INTEGER PRIMARY KEY NOT NULL,
  ProfileId INTEGER NOT NULL,
  Automatic INTEGER NOT NULL,
  AutoProxyUrl TEXT,
  ManualProxy TEXT, -- "address:port" separated by ";"
  ProxyExceptions TEXT, -- addresses separated by ";"
  Dns1 TEXT,
  Dns2 TEXT,
  Wins1 TEXT,
  Wins2 TEXT,
  DomainName TEXT,
  SearchList TEXT,
  UNIQUE (ProfileId, Automatic)
) STRICT;

-- Network services that a profile's LinkService can name.
CREATE TABLE Services (
  ServiceId INTEGER PRIMARY KEY NOT NULL,
  Name TEXT NOT NULL,
  DisplayText TEXT NOT NULL
) STRICT;

-- What the client remembers between runs. "ActiveProfile" is the id of the profile that it uses, "ConnectionState" what
-- its connection does (0 disconnected, 1 connecting, 2 connected, 3 disconnecting), "ProxyLocation" the id of the network
-- location whose proxies are in force, 0 for none, "LastRemovedProfile" the highest id of a profile that was removed.
CREATE TABLE ClientState (
  Name TEXT PRIMARY KEY NOT NULL,
  Value TEXT NOT NULL
) STRICT;

-- Values that the client stores under numbers. Flags are 0 or 1.
CREATE TABLE Bookmarks (
  BookmarkId INTEGER PRIMARY KEY NOT NULL,
  Value TEXT NOT NULL
) STRICT;

-- Those who load a profile follow LinkProfile without limit. These triggers guarantee that every chain ends.
CREATE TRIGGER ProfileInsertKeepsChains BEFORE INSERT ON Profiles WHEN NEW.LinkProfile <> 0
BEGIN
  SELECT RAISE(ABORT, 'the profile that it is linked to does not exist')
    WHERE NOT EXISTS (SELECT 1 FROM Profiles WHERE ProfileId = NEW.LinkProfile);
  SELECT RAISE(ABORT, 'its links form a circle')
    WHERE NEW.ProfileId IN (
      WITH RECURSIVE Ancestor(Id) AS (
        SELECT NEW.LinkProfile
        UNION SELECT LinkProfile FROM Profiles JOIN Ancestor ON ProfileId = Id)
      SELECT Id FROM Ancestor);
END;

CREATE TRIGGER ProfileUpdateKeepsChains BEFORE UPDATE OF LinkProfile ON Profiles WHEN NEW.LinkProfile <> 0
BEGIN
  SELECT RAISE(ABORT, 'the profile that it is linked to does not exist')
    WHERE NOT EXISTS (SELECT 1 FROM Profiles WHERE ProfileId = NEW.LinkProfile);
  SELECT RAISE(ABORT, 'its links form a circle')
    WHERE NEW.ProfileId IN (
      WITH RECURSIVE Ancestor(Id) AS (
        SELECT NEW.LinkProfile
        UNION SELECT LinkProfile FROM Profiles JOIN Ancestor ON ProfileId = Id)
      SELECT Id FROM Ancestor);
END;

CREATE TRIGGER ProfileIdStays BEFORE UPDATE OF ProfileId ON Profiles WHEN NEW.ProfileId <> OLD.ProfileId
BEGIN
  SELECT RAISE(ABORT, 'the id of a profile cannot change');
END;

CREATE TRIGGER ProfileWithLinksStays BEFORE DELETE ON Profiles
BEGIN
  SELECT RAISE(ABORT, 'other profiles are linked to it')
    WHERE EXISTS (SELECT 1 FROM Profiles WHERE LinkProfile = OLD.ProfileId);
END;

-- What belongs to a profile goes with it.
CREATE TRIGGER ProfileDeleteTakesItsRows AFTER DELETE ON Profiles
BEGIN
  DELETE FROM Preferences WHERE ProfileId = OLD.ProfileId;
  DELETE FROM AutoStart WHERE ProfileId = OLD.ProfileId;
  DELETE FROM ConfigSettings WHERE ProfileId = OLD.ProfileId;
  DELETE FROM ClientState WHERE Name = 'ActiveProfile' AND Value = CAST(OLD.ProfileId AS TEXT);
END;

-- Programs that have loaded a profile must not take another one for it: its id is not given to a new one.
CREATE TRIGGER ProfileIdIsNotUsedAgain AFTER DELETE ON Profiles WHEN OLD.ProfileId < 10000
BEGIN
  INSERT INTO ClientState (Name, Value) VALUES ('LastRemovedProfile', CAST(OLD.ProfileId AS TEXT))
    ON CONFLICT (Name) DO UPDATE SET Value = excluded.Value WHERE CAST(Value AS INTEGER) < OLD.ProfileId;
END;
