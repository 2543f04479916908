#include "WaylineDll/Store/SettingsStore.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <ranges>
#include <string_view>
#include <system_error>
#include <utility>

#include "Database/Profiles/ProfileNames.h"
#include "NetUtilities/Text/Format.h"
#include "WaylineDll/Store/DatabaseFile.h"
#include "WaylineDll/Store/Failures.h"
#include "WaylineDll/Store/RecordRows.h"
#include "WaylineDll/Store/Statement.h"
#include "WaylineDll/Store/Transaction.h"

namespace {

using std::filesystem::path;

bool IsWritten(ChangeState state) {
  return state == ChangeState::New || state == ChangeState::Changed || state == ChangeState::Renamed;
}

// Columns that a profile always stores itself: what identifies it, and its link.
bool IsNeverInherited(const ColumnBinding& column) {
  return column.marker != 0 || column.kind == ColumnKind::ParentKey;
}

RecordColumns ColumnsNamed(const SQLRecord& record, const std::vector<std::wstring_view>& names) {
  RecordColumns named = {record, {}};
  std::ranges::copy_if(record.GetBindings(), std::back_inserter(named.columns), [&names](const ColumnBinding& column) {
    return std::ranges::find(names, column.name) != names.end();
  });
  return named;
}

Failure RecordFailure(std::wstring_view record, std::wstring_view reason) {
  return Format(L"Nothing was saved, because {} could not be stored: {}.", record, reason);
}

Failure ProfileFailure(uint32_t id, std::wstring_view reason) {
  return RecordFailure(Format(L"profile {}", id), reason);
}

// The changed records of a table, in the order of their keys.
template <typename Table>
void AppendChanges(RecordKind kind, const Table& table, std::vector<RecordChange>& changes) {
  for (const auto& [key, record] : table) {
    if (record == nullptr || record->GetState() == ChangeState::Unchanged) continue;
    changes.push_back({kind, static_cast<uint32_t>(key), record->GetState()});
  }
}

std::vector<RecordChange> ChangesOf(const SettingsTables& tables) {
  std::vector<RecordChange> changes;
  AppendChanges(RecordKind::Profile, tables.profiles, changes);
  AppendChanges(RecordKind::Preference, tables.preferences, changes);
  AppendChanges(RecordKind::AutoStartItem, tables.autoStartItems, changes);
  AppendChanges(RecordKind::ManualConfig, tables.manualConfigs, changes);
  AppendChanges(RecordKind::AutoConfig, tables.autoConfigs, changes);
  return changes;
}

// Whether the links of one profile come to an end; loading it would go on for ever otherwise.
bool ChainEnds(sqlite3* connection, uint32_t id) {
  Statement statement;
  return statement.Prepare(connection,
                           L"WITH RECURSIVE Chain(Parent) AS ("
                           L"SELECT ifnull(LinkProfile, 0) FROM Profiles WHERE ProfileId = ?1 "
                           L"UNION SELECT ifnull(LinkProfile, 0) FROM Profiles JOIN Chain ON ProfileId = Parent) "
                           L"SELECT 1 FROM Chain WHERE Parent = 0") == SQLITE_OK &&
         statement.BindInteger(1, id) == SQLITE_OK && statement.Step() == SQLITE_ROW;
}

// Where records that inherit nothing are stored, and how a failure names one.
struct RowTable {
  std::wstring_view name;
  std::vector<std::wstring_view> keys;
  std::wstring_view recordName;
};

const RowTable kPreferenceRows = {kPreferenceTable, {L"ProfileId", L"PreferenceId"}, L"preference"};
const RowTable kAutoStartRows = {kAutoStartTable, {L"Id"}, L"autostart entry"};
const RowTable kConfigRows = {kConfigSettingTable, {L"ProfileId", L"Automatic"}, L"the proxy configuration of profile"};

template <typename Table>
Failure WriteRows(sqlite3* connection, const RowTable& rows, const Table& records) {
  for (const auto& [key, record] : records) {
    if (record == nullptr || record->GetState() == ChangeState::Unchanged) continue;
    // A changed record may not be stored yet: it can be the copy of another profile's.
    const int32_t code = record->GetState() == ChangeState::Removed
                             ? DeleteRow(connection, rows.name, ColumnsNamed(*record, rows.keys))
                             : ReplaceRow(connection, rows.name, *record);
    if (code != SQLITE_OK) {
      return RecordFailure(Format(L"{} {}", rows.recordName, static_cast<uint32_t>(key)), ReasonText(connection, code));
    }
  }
  return {};
}

}  // namespace

SettingsStore::~SettingsStore() {
  // The process would keep the file open otherwise.
  if (const auto& database = sqlite_.GetDatabase()) database->Close();
}

Failure SettingsStore::Open(const std::wstring& file, SettingsAccess access) {
  std::error_code error;
  // SQLite gives some relative names a meaning of their own.
  const path absolute = std::filesystem::absolute(path(file), error);
  const std::wstring full = error ? file : absolute.wstring();
  const bool exists = std::filesystem::exists(path(full), error);
  if (!exists && !error) {
    if (Failure failure = CreateDatabaseFile(full)) return failure;
  }
  if (Failure failure = CheckDatabaseFile(full, access)) return failure;
  int32_t code = sqlite_.Open(path(full).parent_path().wstring(), path(full).filename().wstring());
  // The process may have had the file open before, or failed to open it.
  if (sqlite_.GetDatabase() != nullptr) code = sqlite_.GetDatabase()->Open(false, sqlite_.GetPath());
  if (code != SQLITE_OK) return UseFailure(full, nullptr, code);
  sqlite3_busy_timeout(Connection(), kBusyTimeout);
  return {};
}

Failure SettingsStore::LoadProfiles(ProfileTable& profiles) {
  Transaction transaction(Connection());
  int32_t code = transaction.BeginReading();
  if (code != SQLITE_OK) return UseFailure(sqlite_.GetPath(), Connection(), code);
  if (Failure failure = CheckProfileChains(Connection(), sqlite_.GetPath())) return failure;
  ProfileTable loaded;
  Statement ids;
  code = ids.Prepare(Connection(), L"SELECT ProfileId FROM Profiles");
  while (code == SQLITE_OK && (code = ids.Step()) == SQLITE_ROW) {
    const auto id = static_cast<uint32_t>(ids.Integer(0));
    code = LoadProfile(id, *(loaded[id] = std::make_shared<Profile>(0)));
  }
  if (code != SQLITE_DONE) return UseFailure(sqlite_.GetPath(), Connection(), code);
  profiles = std::move(loaded);
  return {};
}

bool SettingsStore::LoadPreferences(uint32_t profileId, PreferenceTable& preferences) {
  // The nearest come first. Links that have no end lead no further than there are profiles.
  return ReadPreferences(
      L"join (with recursive Chain(Id, Distance) as ("
      L"select @ProfileId, 0 "
      L"union all select LinkProfile, Distance + 1 from Profiles join Chain on ProfileId = Id "
      L"where LinkProfile <> 0 and Distance < (select count(*) from Profiles)) "
      L"select Id, Distance from Chain) on ProfileId = Id order by Distance;",
      profileId, preferences);
}

bool SettingsStore::LoadOwnPreferences(uint32_t profileId, PreferenceTable& preferences) {
  return ReadPreferences(L"where ProfileId = @ProfileId;", profileId, preferences);
}

bool SettingsStore::ReadPreferences(std::wstring_view selection, uint32_t profileId, PreferenceTable& preferences) {
  preferences.clear();
  SQLContext context;
  int32_t code = sqlite_.Execute(
      context,
      Format(L"select {} from {} {}", ColumnNames(Preference().GetBindings()), kPreferenceRows.name, selection),
      {static_cast<int32_t>(profileId)});
  for (; code == SQLITE_ROW; code = context.Step()) {
    Preference row;
    sqlite_.ReadData(context, &row);
    PreferenceFields fields = row.Fields();
    fields.profileId = profileId;
    preferences.try_emplace(fields.preferenceId, std::make_shared<Preference>(fields));
  }
  if (code != SQLITE_DONE) {
    sqlite_.ReportError(code);
    preferences.clear();
  }
  return !preferences.empty();
}

std::shared_ptr<ConfigSetting> SettingsStore::LoadConfig(uint32_t profileId, bool automatic) {
  auto config = std::make_shared<ConfigSetting>();
  SQLContext context;
  const int32_t code =
      sqlite_.Execute(context,
                      Format(L"select {} from {} where ProfileId = @ProfileId and Automatic = @Automatic;",
                             ColumnNames(config->GetBindings()), kConfigRows.name),
                      {static_cast<int32_t>(profileId), automatic ? 1 : 0});
  if (code == SQLITE_ROW) {
    sqlite_.ReadData(context, config.get());
    return config;
  }
  if (code != SQLITE_DONE) sqlite_.ReportError(code);
  return nullptr;
}

Failure SettingsStore::Save(const SettingsTables& tables, SaveReport& report) {
  report = {};
  std::vector<RecordChange> saved = ChangesOf(tables);
  if (saved.empty()) return {};

  Transaction transaction(Connection());
  int32_t code = transaction.BeginWriting();
  if (code != SQLITE_OK) return SaveFailure(ReasonText(Connection(), code));
  if (Failure failure = CheckProfileChains(Connection(), sqlite_.GetPath())) return failure;
  if (Failure failure = WriteProfiles(tables.profiles)) return failure;
  if (Failure failure = WriteOthers(tables)) return failure;
  if (Failure failure = RemoveProfiles(tables.profiles)) return failure;
  code = transaction.Commit();
  if (code != SQLITE_OK) return SaveFailure(ReasonText(Connection(), code));
  report.changes = std::move(saved);
  return {};
}

Failure SettingsStore::SetPreference(uint32_t profileId, PreferenceId preference, int32_t value) {
  const Preference record({.preferenceId = preference, .profileId = profileId, .state = value});
  const int32_t code = UpdateRow(Connection(), kPreferenceRows.name, ColumnsNamed(record, {L"State"}),
                                 ColumnsNamed(record, kPreferenceRows.keys));
  return code == SQLITE_OK
             ? Failure()
             : RecordFailure(Format(L"{} {}", kPreferenceRows.recordName, static_cast<int32_t>(preference)),
                             ReasonText(Connection(), code));
}

uint32_t SettingsStore::GetActiveProfileId() {
  Statement statement;
  if (statement.Prepare(Connection(), L"SELECT Value FROM ClientState WHERE Name = 'ActiveProfile'") != SQLITE_OK ||
      statement.Step() != SQLITE_ROW) {
    return 0;
  }
  return static_cast<uint32_t>(statement.Integer(0));
}

ProfileTimeouts SettingsStore::GetActiveTimeouts() {
  Profile active(0);
  const uint32_t id = GetActiveProfileId();
  if (!ChainEnds(Connection(), id) || LoadProfile(id, active) != SQLITE_OK) return {};
  return {active.GetSMSessionTime(), active.GetSMIdleTime(), active.GetSMThresholdTime()};
}

sqlite3* SettingsStore::Connection() const { return sqlite_.GetDatabase()->GetConnection(); }

// A profile that is not stored is left as it is.
int32_t SettingsStore::LoadProfile(uint32_t id, Profile& profile) {
  const int32_t code = sqlite_.LoadHierarchical(kProfileTable, L"where ProfileId = @ProfileId", id, profile);
  return code == SQLITE_DONE ? SQLITE_OK : code;
}

Failure SettingsStore::WriteProfiles(const ProfileTable& profiles) {
  // What a profile inherits is what its defaults said when it was loaded. So all stored values are read
  // before the first of them changes; otherwise changed defaults would make the profiles that follow them
  // store the old ones.
  std::vector<std::pair<const Profile*, Profile>> updates;
  for (const auto& [id, profile] : profiles) {
    if (profile == nullptr || !IsWritten(profile->GetState())) continue;
    if (profile->GetState() == ChangeState::New) {
      if (Failure failure = InsertProfile(*profile)) return failure;
      continue;
    }
    Profile stored(0);
    const int32_t code = LoadProfile(id, stored);
    if (code != SQLITE_OK) return ProfileFailure(id, ReasonText(Connection(), code));
    if (stored.GetProfileId() != id) return ProfileFailure(id, L"it no longer exists");
    updates.emplace_back(profile.get(), stored);
  }
  for (const auto& [profile, stored] : updates) {
    if (Failure failure = UpdateProfile(*profile, stored)) return failure;
  }
  return {};
}

Failure SettingsStore::InsertProfile(const Profile& profile) {
  Profile inherited(0);
  int32_t code = LoadProfile(profile.GetLinkProfile(), inherited);
  if (code == SQLITE_OK) {
    RecordColumns columns = {profile, {}};
    std::ranges::copy_if(profile.GetBindings(), std::back_inserter(columns.columns), IsNeverInherited);
    std::ranges::remove_copy_if(DifferingColumns(profile, inherited).columns, std::back_inserter(columns.columns),
                                IsNeverInherited);
    code = InsertRow(Connection(), kProfileTable, columns);
  }
  return code == SQLITE_OK ? Failure() : ProfileFailure(profile.GetProfileId(), ReasonText(Connection(), code));
}

Failure SettingsStore::UpdateProfile(const Profile& profile, const Profile& stored) {
  const RecordColumns changed = DifferingColumns(profile, stored);
  if (changed.columns.empty()) return {};
  const int32_t code = UpdateRow(Connection(), kProfileTable, changed, ColumnsNamed(stored, {L"ProfileId"}));
  return code == SQLITE_OK ? Failure() : ProfileFailure(stored.GetProfileId(), ReasonText(Connection(), code));
}

Failure SettingsStore::RemoveProfiles(const ProfileTable& profiles) {
  // The last made first: profiles are linked to those that were there before them.
  for (const auto& [id, profile] : std::views::reverse(profiles)) {
    if (profile == nullptr || profile->GetState() != ChangeState::Removed) continue;
    const int32_t code = DeleteRow(Connection(), kProfileTable, ColumnsNamed(*profile, {L"ProfileId"}));
    if (code != SQLITE_OK) return ProfileFailure(id, ReasonText(Connection(), code));
  }
  return {};
}

Failure SettingsStore::WriteOthers(const SettingsTables& tables) {
  if (Failure failure = WriteRows(Connection(), kPreferenceRows, tables.preferences)) return failure;
  if (Failure failure = WriteRows(Connection(), kAutoStartRows, tables.autoStartItems)) return failure;
  if (Failure failure = WriteRows(Connection(), kConfigRows, tables.manualConfigs)) return failure;
  return WriteRows(Connection(), kConfigRows, tables.autoConfigs);
}
