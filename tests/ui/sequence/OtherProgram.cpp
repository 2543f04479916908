#include "tests/ui/sequence/OtherProgram.h"

#include <algorithm>
#include <map>

#include "LoginProperties/Preferences/PreferenceTree.h"
#include "tests/ui/OtherConnection.h"

namespace {

// A column of a profile, also NULL, and what may be put there.
struct Column {
  const char* name;
  bool alsoInDefaults;
  std::vector<const char*> values;
};

const std::vector<Column> kColumns = {
    {"DefaultTimeouts", false, {"0", "1"}},
    {"DurationTime", true, {"0", "120", "1800", "28800", "-600", "1000"}},
    {"ThresholdOnOff", true, {"0", "1"}},
    {"ThresholdBytes", true, {"0", "1000", "60000"}},
    {"ThresholdTimeOut", true, {"0", "60", "600", "-900"}},
    {"WarnTime", true, {"0", "30", "300", "-120", "100"}},
    {"SMIdleTime", true, {"0", "60", "120", "3600"}},
    {"SMSessionTime", true, {"0", "60", "120", "1800", "28800"}},
    {"SMThresholdTime", true, {"0", "1", "10", "30"}},
    {"SMThresholdBytes", true, {"0", "50", "1000"}},
    {"DefaultPreferences", false, {"0", "1"}},
    {"DefaultAutostart", false, {"0", "1"}},
    {"OverrideAutoReconnectDefaults", false, {"0", "1"}},
    {"OverrideARMode", true, {"0", "1"}},
    {"OverrideASWiFiMode", true, {"0", "1"}},
    {"OverridePromptUserToSwitch", true, {"0", "1"}},
    {"OverrideSwitchInterval", true, {"0", "15", "400"}},
    {"OverrideSignalStrength", true, {"0", "40", "9"}},
    {"AdvancedAutoReconnectSettings", true, {"0", "1", "2"}},
    {"SMUserMayOverrideAutoReconnectDefaults", true, {"0", "1", "1"}},
    {"SMAutoReconnectMode", true, {"0", "1"}},
    {"SMAutoSwitchWiFiMode", true, {"0", "1"}},
    {"SMSwitchInterval", true, {"30", "60"}},
    {"SMSignalStrength", true, {"60", "70"}},
    {"Account", true, {"'One Ltd'", "'Other Ltd'", "''"}},
    {"UserId", true, {"'one'", "'other'"}},
    {"LinkService", true, {"400", "402", "999", "0"}},
    {"Hidden", true, {"0", "0", "1"}},
    {"DNS1Setting", true, {"'a'", "'m'", "'n'"}},
    {"SearchListSetting", true, {"'a'", "'m'", "'n'"}},
    {"HelpURL", true, {"'https://one.example.com'", "'https://other.example.com'"}},
};

std::vector<uint32_t> Matching(const StoredSettings& stored, auto isWanted) {
  std::vector<uint32_t> ids;
  for (const auto& [id, row] : stored.profiles) {
    if (isWanted(id)) ids.push_back(id);
  }
  return ids;
}

std::string Quoted(const std::string& text) { return "'" + text + "'"; }

}  // namespace

void OtherProgram::TakeStep() {
  switch (Random().Below(28)) {
    case 0:
    case 1:
      RemoveProfile();
      break;
    case 2:
    case 3:
      AddProfile();
      break;
    case 4:
      AddDefaults();
      break;
    case 5:
      RenameProfile();
      break;
    case 6:
    case 7:
      Link();
      break;
    case 8:
    case 9:
    case 10:
      StoreAutoStart();
      break;
    case 11:
    case 12:
      StoreConfig();
      break;
    case 13:
      StoreService();
      break;
    case 14:
    case 15:
      StoreClientState();
      break;
    case 16:
      StoreBookmark();
      break;
    case 17:
    case 18:
    case 19:
    case 20:
      StorePreference();
      break;
    default:
      StoreColumn();
  }
}

void OtherProgram::ShowAllProfiles() { Run("UPDATE Profiles SET Hidden = NULL"); }

void OtherProgram::Run(const std::string& sql) {
  scene_.story << "[" << sql << "]; ";
  RunSql(scene_.file, sql);
  scene_.stored = ReadSettings(scene_.file);
}

std::string OtherProgram::AnyProfile() { return std::to_string(Random().OneOf(Stored().profiles).first); }

std::string OtherProgram::AnyDefaults() {
  return std::to_string(Random().OneOf(Matching(Stored(), [](uint32_t id) { return id <= kLastRoot; })));
}

void OtherProgram::RemoveProfile() {
  const auto removable = Matching(Stored(), [&](uint32_t id) { return id != 1 && !Stored().IsFollowed(id); });
  if (removable.size() > 3) Run("DELETE FROM Profiles WHERE ProfileId = " + std::to_string(Random().OneOf(removable)));
}

// Its id is often the one that a new profile of the sheet has.
void OtherProgram::AddProfile() {
  if (Stored().profiles.size() > 12) return;
  uint32_t last = Stored().Number("LastRemovedProfile");
  for (const uint32_t id : Matching(Stored(), [](uint32_t id) { return id < kLastWithOwnPreferences; })) {
    last = std::max(last, id);
  }
  Run("INSERT INTO Profiles (ProfileId, Name, LinkProfile, DefaultTimeouts) VALUES (" + std::to_string(last + 1) +
      ", 'Added " + std::to_string(++added_) + "', " + AnyDefaults() + ", " + std::to_string(Random().Below(2)) + ")");
}

void OtherProgram::AddDefaults() {
  const std::string id = Random().OneOf(std::vector{"50", "100", "2000"});
  if (Stored().profiles.contains(static_cast<uint32_t>(std::stoul(id)))) return;
  Run("INSERT INTO Profiles (ProfileId, Name, LinkProfile, Account) VALUES (" + id + ", 'Defaults " +
      std::to_string(++added_) + "', " + (Random().OneIn(2) ? "1" : "NULL") + ", 'Defaults Ltd')");
}

void OtherProgram::RenameProfile() {
  const std::string name = Random().OneIn(2) ? "Work" : "Named " + std::to_string(++added_);
  Run("UPDATE Profiles SET Name = " + Quoted(name) + " WHERE ProfileId = " + AnyProfile());
}

// To any other profile that does not follow it itself.
void OtherProgram::Link() {
  const uint32_t linked = Random().OneOf(Stored().profiles).first;
  const uint32_t followed = Random().OneOf(Stored().profiles).first;
  if (linked <= kLastRoot) return;
  for (uint32_t id = followed; id != 0; id = Stored().LinkOf(id)) {
    if (id == linked) return;
  }
  Run("UPDATE Profiles SET LinkProfile = " + std::to_string(followed) + " WHERE ProfileId = " + std::to_string(linked));
}

void OtherProgram::StoreColumn() {
  const Column& column = Random().OneOf(kColumns);
  const uint32_t id = Random().OneOf(Stored().profiles).first;
  if (id <= kLastRoot && !column.alsoInDefaults) return;
  Run("UPDATE Profiles SET " + std::string(column.name) + " = " +
      (Random().OneIn(4) ? "NULL" : Random().OneOf(column.values)) + " WHERE ProfileId = " + std::to_string(id));
}

void OtherProgram::StorePreference() {
  static const PreferenceTree tree = MakePreferenceTree(false);
  const PreferenceGroup& group = Random().OneOf(tree);
  const auto entry = static_cast<int32_t>(Random().OneOf(group.entries).id);
  const bool isChoice = group.kind == GroupKind::Choice;
  const std::string profile = AnyProfile();
  const std::string id = std::to_string(isChoice ? static_cast<int32_t>(group.id) : entry);
  if (Random().OneIn(3)) {
    return Run("DELETE FROM Preferences WHERE ProfileId = " + profile + " AND PreferenceId = " + id);
  }
  const std::string state = std::to_string(isChoice ? entry : 1 + Random().Below(2));
  Run("INSERT OR REPLACE INTO Preferences (ProfileId, PreferenceId, State, Visible, IPSecRequired) VALUES (" + profile +
      ", " + id + ", " + state + ", 1, " + std::to_string(Random().Below(2)) + ")");
}

void OtherProgram::StoreAutoStart() {
  const std::string profile = AnyProfile();
  if (Random().OneIn(4)) return Run("DELETE FROM AutoStart WHERE ProfileId = " + profile);
  const std::string name = Quoted("Program " + std::to_string(++added_));
  const std::string phase = Random().OneOf(std::vector{"300", "700", "1600"});
  const std::string values = profile + ", " + phase + ", " + std::to_string(1 + Random().Below(3)) + ", 2, " + name;
  if (Random().OneIn(2)) {
    return Run("INSERT INTO AutoStart (ProfileId, Phase, ItemOrder, RecordType, Name) VALUES (" + values + ")");
  }
  Run("INSERT INTO AutoStart (ProfileId, Phase, ItemOrder, RecordType, Name, Modifiable, Program, DelaySeconds) VALUES "
      "(" +
      values + ", 0, 'C:\\Tools\\program.exe', 30)");
}

void OtherProgram::StoreConfig() {
  const std::string profile = AnyProfile();
  const std::string automatic = Random().OneIn(3) ? "1" : "0";
  if (Random().OneIn(4)) {
    return Run("DELETE FROM ConfigSettings WHERE ProfileId = " + profile + " AND Automatic = " + automatic);
  }
  Run("INSERT OR REPLACE INTO ConfigSettings (ProfileId, Automatic, ManualProxy, Dns1, Wins1) VALUES (" + profile +
      ", " + automatic + ", 'proxy" + std::to_string(++added_) + ".example.com:80', " +
      (Random().OneIn(2) ? "'192.0.2.7'" : "NULL") + ", '')");
}

void OtherProgram::StoreService() {
  const std::string id = Random().OneOf(std::vector{"400", "401", "402", "403"});
  if (Random().OneIn(3)) return Run("DELETE FROM Services WHERE ServiceId = " + id);
  const std::string text = Quoted("Service " + std::to_string(++added_));
  Run("INSERT OR REPLACE INTO Services (ServiceId, Name, DisplayText) VALUES (" + id + ", 'service', " + text + ")");
}

void OtherProgram::StoreClientState() {
  const bool connection = Random().OneIn(2);
  const std::string name = connection ? "ConnectionState" : "ActiveProfile";
  const std::string value = connection ? std::to_string(Random().Below(4)) : AnyProfile();
  Run("INSERT OR REPLACE INTO ClientState (Name, Value) VALUES (" + Quoted(name) + ", " + Quoted(value) + ")");
}

void OtherProgram::StoreBookmark() {
  if (Random().OneIn(5)) return Run("DELETE FROM Bookmarks WHERE BookmarkId = 8");
  const std::string value = Random().OneOf(std::vector{"'1'", "'1'", "'1'", "'1'", "'0'", "'yes'"});
  Run("INSERT OR REPLACE INTO Bookmarks (BookmarkId, Value) VALUES (8, " + value + ")");
}
