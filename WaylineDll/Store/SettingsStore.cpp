#include "WaylineDll/Store/SettingsStore.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "Database/Profiles/PageOverrides.h"
#include "Database/Profiles/ProfileIdManager.h"
#include "Database/Profiles/ProfileNames.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Text/Format.h"
#include "WaylineDll/Store/BuiltInPhases.h"
#include "WaylineDll/Store/DatabaseCreation.h"
#include "WaylineDll/Store/DatabaseFile.h"
#include "WaylineDll/Store/Failures.h"
#include "WaylineDll/Store/OpenConnection.h"
#include "WaylineDll/Store/RecordLoader.h"
#include "WaylineDll/Store/RecordRows.h"
#include "WaylineDll/Store/Saving.h"
#include "WaylineDll/Store/Statement.h"
#include "WaylineDll/Store/Transaction.h"

namespace {

using std::filesystem::path;

constexpr std::wstring_view kNotLoaded = L"the login profiles have not been loaded";

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

int32_t FindProfile(sqlite3* connection, uint32_t id, bool& exists) {
  Statement statement;
  int32_t code = statement.Prepare(connection, L"SELECT 1 FROM Profiles WHERE ProfileId = ?1");
  if (code == SQLITE_OK) code = statement.BindInteger(1, id);
  if (code == SQLITE_OK) code = statement.Step();
  exists = code == SQLITE_ROW;
  return exists || code == SQLITE_DONE ? SQLITE_OK : code;
}

// The configuration of a profile that has none.
std::optional<LoadedRecord<ConfigSetting>> EmptyConfig(uint32_t profileId, bool automatic) {
  ConfigSetting config;
  config.fields.profileId = static_cast<int32_t>(profileId);
  config.fields.automatic = automatic;
  return LoadedRecord<ConfigSetting>{.record = std::make_shared<ConfigSetting>(config), .values = config};
}

// Whether a list is the profile's own as a whole: it is not inherited, or was changed.
bool IsOwnList(const LoadedAutoStart& list) {
  return std::ranges::any_of(list, [](const auto& entry) { return entry.second.IsOwn(); });
}

// The id of a new profile that is gone, with its lists forgotten; 0 when there is none. Its configurations, which
// nobody can have changed, may still be in the hands of the page.
uint32_t TakeDroppedId(LoadedRecords& records) {
  const auto found = std::ranges::find_if(records.created, [](const auto& entry) { return entry.second.expired(); });
  if (found == records.created.end()) return 0;
  const uint32_t id = found->first;
  records.created.erase(found);
  records.preferences.erase(id);
  records.autoStartItems.erase(id);
  records.newAutoStartItems.erase(id);
  return id;
}

// The records of a list that was loaded.
template <typename List, typename Table>
void CopyRecords(const List& list, Table& table) {
  for (const auto& [id, loaded] : list) table.try_emplace(id, loaded.record);
}

// Adds the new entries of a profile that the user has confirmed, also those that were removed again.
void AddConfirmed(const LoadedRecords& records, uint32_t profileId, AutoStartTable& items) {
  const auto found = records.newAutoStartItems.find(profileId);
  if (found == records.newAutoStartItems.end()) return;
  for (const auto& [id, item] : found->second) {
    if (item->GetState() != ChangeState::Unchanged) items[id] = item;
  }
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
  if (code != SQLITE_OK) return UseFailure(GetFile(), Connection(), code);
  if (Failure failure = CheckProfileChains(Connection(), GetFile())) return failure;
  code = ReadActiveProfileId();
  if (code != SQLITE_OK) return UseFailure(GetFile(), Connection(), code);
  ProfileTable table;
  LoadedRecords loaded;
  std::set<uint32_t> ids;
  Statement rows;
  code = rows.Prepare(Connection(), L"SELECT ProfileId FROM Profiles");
  while (code == SQLITE_OK && (code = rows.Step()) == SQLITE_ROW) {
    const auto id = static_cast<uint32_t>(rows.Integer(0));
    Profile& values = loaded.profiles.emplace(id, Profile(0)).first->second;
    code = LoadProfile(id, values);
    table.emplace(id, std::make_shared<Profile>(values));
    ids.insert(id);
  }
  if (code != SQLITE_DONE) return UseFailure(GetFile(), Connection(), code);
  uint32_t removed = 0;
  code = ReadLastRemovedProfile(Connection(), removed);
  if (code != SQLITE_OK) return UseFailure(GetFile(), Connection(), code);
  profiles = std::move(table);
  loaded_ = std::move(loaded);
  if (const auto manager = Singleton<ProfileIdManager>::Get()) {
    manager->SetUsed(std::move(ids), removed);
  }
  return {};
}

Failure SettingsStore::CreateProfile(std::shared_ptr<Profile>& profile) {
  profile.reset();
  // The id of one that nobody wanted after all is given out again.
  const uint32_t dropped = loaded_ ? TakeDroppedId(*loaded_) : 0;
  const auto created = std::make_shared<Profile>(dropped != 0 ? dropped : Profile::kNewId);
  const uint32_t id = created->GetProfileId();
  if (id == 0 || !loaded_) return Format(L"No login profile can be made: {}.", loaded_ ? kNoProfileIdLeft : kNotLoaded);
  const uint32_t defaults = FindDefaultsForNew(loaded_->profiles);
  if (defaults != 0) *created = loaded_->profiles.at(defaults);
  created->Columns().profileId = id;
  created->Columns().linkProfile = defaults;
  created->SetName({});
  created->SetHidden(false);  // as defaults may be
  loaded_->created[id] = created;
  profile = created;
  return {};
}

uint32_t SettingsStore::FindDefaultsForNew(const std::map<uint32_t, Profile>& profiles) {
  const auto active = profiles.find(GetActiveProfileId());
  const uint32_t link = active != profiles.end() ? active->second.GetLinkProfile() : 0;
  if (link != 0 && link <= kLastDefaultsId && profiles.contains(link)) return link;
  return !profiles.empty() && profiles.begin()->first <= kLastDefaultsId ? profiles.begin()->first : 0;
}

LoadedRecords& SettingsStore::RecordsOr(LoadedRecords& fresh) { return loaded_ ? *loaded_ : fresh; }

bool SettingsStore::LoadPreferences(uint32_t profileId, PreferenceTable& preferences) {
  preferences.clear();
  LoadedRecords fresh;
  const LoadedPreferences* const list = FindPreferences(RecordsOr(fresh), profileId);
  if (list != nullptr) CopyRecords(*list, preferences);
  return list != nullptr;
}

bool SettingsStore::LoadOwnPreferences(uint32_t profileId, PreferenceTable& preferences) {
  preferences.clear();
  // Rows of others mean nothing: their preferences are those of the profile that they are linked to.
  if (!CanOwnPreferences(profileId)) return false;
  LoadedRecords fresh;
  const LoadedPreferences* const list = FindPreferences(RecordsOr(fresh), profileId);
  if (list == nullptr) return false;
  for (const auto& [id, loaded] : *list) {
    if (loaded.IsOwn()) preferences.emplace(id, loaded.record);
  }
  return !preferences.empty();
}

bool SettingsStore::LoadAutoStart(uint32_t profileId, AutoStartTable& items) {
  items.clear();
  LoadedRecords fresh;
  LoadedRecords& records = RecordsOr(fresh);
  const LoadedAutoStart* const list = FindAutoStart(records, profileId);
  if (list == nullptr) return false;
  CopyRecords(*list, items);
  AddConfirmed(records, profileId, items);
  return true;
}

bool SettingsStore::LoadOwnAutoStart(uint32_t profileId, AutoStartTable& items) {
  items.clear();
  LoadedRecords fresh;
  LoadedRecords& records = RecordsOr(fresh);
  const LoadedAutoStart* const list = FindAutoStart(records, profileId);
  if (list == nullptr) return false;
  AddConfirmed(records, profileId, items);
  const auto isRemoved = [](const auto& entry) { return entry.second->GetState() == ChangeState::Removed; };
  std::erase_if(items, isRemoved);
  if (items.empty() && !IsOwnList(*list)) return false;
  CopyRecords(*list, items);
  std::erase_if(items, isRemoved);
  return !items.empty();
}

uint64_t SettingsStore::CopyAutoStart(uint32_t profileId, const AutoStartTable& source, AutoStartTable& copies) {
  LoadedRecords fresh;
  LoadedRecords& records = RecordsOr(fresh);
  const auto isToCopy = [](const auto& entry) {
    return entry.second && entry.second->GetState() != ChangeState::Removed;
  };
  if (FindAutoStart(records, profileId) == nullptr) return 0;
  LoadedAutoStart& list = records.autoStartItems.at(profileId);
  const bool hasCopies = std::ranges::any_of(list, [](const auto& entry) { return entry.second.copied; });
  // Without entries to copy, the profile goes on to inherit.
  if (!hasCopies && std::ranges::any_of(source, isToCopy)) {
    std::erase_if(list, [](const auto& entry) { return !entry.second.IsOwn(); });
    for (const auto& entry : source) {
      if (!isToCopy(entry)) continue;
      const AutoStartItem& item = *entry.second;
      const uint32_t id = records.nextCopyId++;
      const auto copy = std::make_shared<AutoStartItem>();
      copy->fields = item.fields;
      copy->fields.id = static_cast<int32_t>(id);
      copy->fields.profileId = static_cast<int32_t>(profileId);
      copy->SetState(ChangeState::Changed);
      list[id] = {.record = copy, .values = *copy, .copied = true};
    }
  }
  uint64_t count = 0;
  for (const auto& [id, loaded] : list) {
    if (!loaded.copied) continue;
    copies[id] = loaded.record;
    ++count;
  }
  return count;
}

std::shared_ptr<AutoStartItem> SettingsStore::CreateAutoStartItem(uint32_t profileId) {
  LoadedRecords fresh;
  LoadedRecords& records = RecordsOr(fresh);
  const uint32_t id = records.nextCopyId++;
  auto item = std::make_shared<AutoStartItem>();
  item->fields.id = static_cast<int32_t>(id);
  item->fields.profileId = static_cast<int32_t>(profileId);
  item->fields.phase = BuiltInPhases().front().phase;
  records.newAutoStartItems[profileId][id] = item;
  return item;
}

// Both profiles' preferences have been handed out.
void SettingsStore::CopyPreferences(LoadedRecords& records, uint32_t sourceId, uint32_t newId) {
  PreferenceTable preferences;
  LoadOwnPreferences(sourceId, preferences);
  LoadedPreferences& list = records.preferences.at(newId);
  for (const auto& [id, preference] : preferences) {
    const auto copy = std::make_shared<Preference>(preference->Fields());
    copy->SetProfileId(newId);
    list[id] = {.record = copy, .values = *copy, .copied = true};
  }
}

bool SettingsStore::CopyLists(uint32_t sourceId, uint32_t newId) {
  if (!loaded_ || FindPreferences(*loaded_, sourceId) == nullptr || FindAutoStart(*loaded_, sourceId) == nullptr) {
    return false;
  }
  loaded_->preferences.erase(newId);
  if (FindPreferences(*loaded_, newId) == nullptr) return false;
  CopyPreferences(*loaded_, sourceId, newId);
  AutoStartTable items;
  AutoStartTable itemCopies;
  loaded_->autoStartItems.erase(newId);
  if (LoadOwnAutoStart(sourceId, items)) CopyAutoStart(newId, items, itemCopies);
  return true;
}

bool SettingsStore::LoadServices(std::vector<ServiceRecord>& services) {
  auto loaded = RecordLoader(sqlite_).LoadServices();
  services = loaded ? std::move(*loaded) : std::vector<ServiceRecord>();
  return loaded.has_value();
}

std::shared_ptr<ConfigSetting> SettingsStore::LoadConfig(uint32_t profileId, bool automatic) {
  LoadedRecords fresh;
  LoadedConfigs& configs = RecordsOr(fresh).configs;
  auto found = configs.find({profileId, automatic});
  if (found == configs.end()) {
    // What is stored under the id of a new profile belongs to one that another program has made meanwhile.
    const bool isNew = loaded_ && loaded_->created.contains(profileId);
    auto loaded = isNew ? EmptyConfig(profileId, automatic) : RecordLoader(sqlite_).LoadConfig(profileId, automatic);
    if (!loaded) return nullptr;
    found = configs.emplace(std::pair(profileId, automatic), std::move(*loaded)).first;
  }
  return found->second.record;
}

// Null when they cannot be read.
const LoadedPreferences* SettingsStore::FindPreferences(LoadedRecords& records, uint32_t profileId) {
  auto found = records.preferences.find(profileId);
  if (found == records.preferences.end()) {
    auto loaded = RecordLoader(sqlite_).LoadPreferences(profileId, FirstOfChain(profileId));
    if (!loaded) return nullptr;
    found = records.preferences.emplace(profileId, std::move(*loaded)).first;
  }
  return &found->second;
}

// Null when they cannot be read.
const LoadedAutoStart* SettingsStore::FindAutoStart(LoadedRecords& records, uint32_t profileId) {
  auto found = records.autoStartItems.find(profileId);
  if (found == records.autoStartItems.end()) {
    auto loaded = RecordLoader(sqlite_).LoadAutoStart(profileId, FirstOfChain(profileId), records.nextCopyId);
    if (!loaded) return nullptr;
    found = records.autoStartItems.emplace(profileId, std::move(*loaded)).first;
  }
  return &found->second;
}

// A profile that is not stored yet inherits from the one that it is to be linked to.
uint32_t SettingsStore::FirstOfChain(uint32_t profileId) const {
  if (!loaded_) return profileId;
  const auto found = loaded_->created.find(profileId);
  const auto created = found != loaded_->created.end() ? found->second.lock() : nullptr;
  return created ? created->GetLinkProfile() : profileId;
}

Failure SettingsStore::Save(const SettingsTables& tables, SaveReport& report) {
  report = {};
  LoadedRecords fresh;
  LoadedRecords& records = RecordsOr(fresh);
  for (const auto& [id, profile] : tables.profiles) {
    if (profile && profile->GetState() == ChangeState::New) records.created[id] = profile;
  }
  const ListsToPin lists = FindListsToPin(tables.profiles, records);
  for (const uint32_t id : lists.preferences) {
    if (FindPreferences(records, id) == nullptr) return SaveFailure(ReasonText(Connection()));
  }
  for (const uint32_t id : lists.autoStartItems) {
    if (FindAutoStart(records, id) == nullptr) return SaveFailure(ReasonText(Connection()));
  }
  const auto nameOf = [&](uint32_t id) {
    if (const auto found = tables.profiles.find(id); found != tables.profiles.end() && found->second) {
      return found->second->GetName();
    }
    const auto found = records.profiles.find(id);
    return found != records.profiles.end() ? found->second.GetName() : std::to_wstring(id);
  };
  std::vector<RowChange> plan = PlanSaving(tables, records);
  if (!plan.empty()) {
    if (Failure failure = WritePlan(sqlite_, std::move(plan), nameOf, report)) return failure;
  }
  DiscardChanges();
  return {};
}

Failure SettingsStore::SetPreference(uint32_t profileId, PreferenceId preference, int32_t value) {
  constexpr std::array<std::wstring_view, 1> kValue = {L"State"};
  constexpr std::array<std::wstring_view, 2> kKeys = {L"ProfileId", L"PreferenceId"};
  const auto failure = [this](int32_t code) { return SaveFailure(ReasonText(Connection(), code)); };
  Transaction transaction(Connection());
  int32_t code = transaction.BeginWriting();
  if (code != SQLITE_OK) return failure(code);
  bool exists = false;
  code = FindProfile(Connection(), profileId, exists);
  if (code != SQLITE_OK) return failure(code);
  if (!exists) return SaveFailure(L"there is no such login profile");
  const auto preferences = RecordLoader(sqlite_).LoadPreferences(profileId, profileId);
  if (!preferences) return SaveFailure(ReasonText(Connection()));
  const auto found = preferences->find(preference);
  PreferenceFields fields = found != preferences->end() ? found->second.values.Fields() : PreferenceFields{};
  fields.preferenceId = preference;
  fields.profileId = profileId;
  fields.state = value;
  const Preference record(fields);
  const bool stored = found != preferences->end() && found->second.stored;
  code = stored ? UpdateRow(Connection(), kPreferenceTable, ColumnsNamed(record, kValue), {record, {}},
                            ColumnsNamed(record, kKeys))
                : InsertRow(Connection(), kPreferenceTable,
                            {record, {record.GetBindings().begin(), record.GetBindings().end()}});
  if (code == SQLITE_OK) code = transaction.Commit();
  if (code != SQLITE_OK) return failure(code);
  NoteStored(record);
  return {};
}

// What was handed out shows it too, unless the user has changed it meanwhile.
void SettingsStore::NoteStored(const Preference& preference) {
  if (!loaded_) return;
  const auto list = loaded_->preferences.find(preference.Fields().profileId);
  if (list == loaded_->preferences.end()) return;
  auto& loaded = list->second[preference.GetPreferenceId()];
  if (!loaded.record) loaded.record = std::make_shared<Preference>(preference);
  if (loaded.record->GetState() == ChangeState::Unchanged) *loaded.record = preference;
  loaded.values = preference;
  loaded.stored = true;
}

uint32_t SettingsStore::GetActiveProfileId() {
  if (const int32_t code = ReadActiveProfileId(); code != SQLITE_OK) {
    Log(LogSource::Database, LogLevel::Error,
        Format(L"The active profile cannot be read: {}", ReasonText(Connection(), code)));
  }
  return activeProfileId_;
}

int32_t SettingsStore::ReadActiveProfileId() {
  Statement statement;
  int32_t code = statement.Prepare(Connection(), L"SELECT Value FROM ClientState WHERE Name = 'ActiveProfile'");
  if (code == SQLITE_OK) code = statement.Step();
  if (code == SQLITE_ROW) {
    activeProfileId_ = static_cast<uint32_t>(statement.Integer(0));
    return SQLITE_OK;
  }
  if (code != SQLITE_DONE) return code;
  activeProfileId_ = 0;
  return SQLITE_OK;
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
