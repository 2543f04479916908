#include "WaylineDll/Store/SavePlan.h"

#include <algorithm>
#include <compare>
#include <functional>
#include <iterator>
#include <map>
#include <ranges>
#include <stdexcept>
#include <utility>

#include "Database/Profiles/PageOverrides.h"
#include "WaylineDll/Store/RecordRows.h"

namespace {

using Columns = std::vector<ColumnBinding>;

// What is to be saved of a row that may have been handed out, or be the caller's own.
template <typename Record>
struct Candidate {
  std::shared_ptr<const Record> record;
  const LoadedRecord<Record>* loaded = nullptr;
};

bool Contains(const Columns& columns, std::wstring_view name) {
  return std::ranges::find(columns, name, &ColumnBinding::name) != columns.end();
}

// Columns that a profile always stores itself: what identifies it, and its link.
bool IsNeverInherited(const ColumnBinding& column) {
  return column.marker != 0 || column.kind == ColumnKind::ParentKey;
}

Columns ChangedColumns(const SQLRecord& record, const SQLRecord& before) {
  Columns changed = DifferingColumns(record, before).columns;
  std::erase_if(changed, [](const ColumnBinding& column) { return column.kind == ColumnKind::Key; });
  return changed;
}

Columns AllButTheKey(const SQLRecord& record) {
  Columns columns;
  std::ranges::copy_if(record.GetBindings(), std::back_inserter(columns),
                       [](const ColumnBinding& column) { return column.kind != ColumnKind::Key; });
  return columns;
}

// The columns that an overriding profile makes its own: those of each page whose override has been switched on, or of
// which one has changed.
Columns PinnedColumns(const Profile& profile, const Profile& before, const Columns& changed) {
  Columns pinned;
  for (const PageOverride& page : PageOverrides()) {
    const bool touched = !page.overrides(before) || std::ranges::any_of(page.columns, [&](std::wstring_view name) {
      return Contains(changed, name);
    });
    if (!touched || !page.overrides(profile)) continue;
    for (const std::wstring_view name : page.columns) {
      if (!Contains(changed, name)) pinned.push_back(ColumnNamed(profile, name));
    }
  }
  return pinned;
}

template <typename Table>
auto Find(const Table& table, uint32_t id) {
  const auto found = table.find(id);
  return found != table.end() ? &found->second : nullptr;
}

// Everything about the profiles that deciding on the other rows needs to know.
class ProfilesToSave {
 public:
  ProfilesToSave(const ProfileTable& profiles, const LoadedRecords& loaded) : profiles_(profiles), loaded_(loaded) {}

  // As the user has it now; null when there is no such profile.
  const Profile* Now(uint32_t id) const {
    if (const auto* profile = Find(profiles_, id); profile != nullptr && *profile != nullptr) return profile->get();
    return Find(loaded_.profiles, id);
  }

  // As it was loaded; a new profile as it started: with the values of the one that it follows.
  const Profile& Before(const Profile& profile) const {
    static const Profile kWithoutDefaults(0);
    if (const Profile* before = Find(loaded_.profiles, profile.GetProfileId())) return *before;
    if (const Profile* defaults = Find(loaded_.profiles, profile.GetLinkProfile())) return *defaults;
    const Profile* const defaults = Now(profile.GetLinkProfile());
    return defaults != nullptr ? *defaults : kWithoutDefaults;
  }

  bool IsRemoved(uint32_t id) const {
    const Profile* const profile = Now(id);
    return profile != nullptr && profile->GetState() == ChangeState::Removed;
  }

  // Whether it was made and is not wanted after all.
  bool IsDropped(uint32_t id) const { return Now(id) == nullptr && loaded_.created.contains(id); }

  // How many links there are above a profile. A circle does not go on for ever.
  size_t Depth(uint32_t id) const {
    size_t depth = 0;
    for (const Profile* profile = Now(id); profile != nullptr && depth <= profiles_.size() + loaded_.profiles.size();
         profile = Now(profile->GetLinkProfile())) {
      ++depth;
    }
    return depth;
  }

  // The profiles with this change state or one of these, those without links first.
  std::vector<const Profile*> InOrderOfLinks(const std::function<bool(ChangeState)>& isWanted) const {
    std::vector<std::pair<size_t, const Profile*>> ordered;
    for (const auto& [id, profile] : profiles_) {
      if (profile && isWanted(profile->GetState())) ordered.emplace_back(Depth(id), profile.get());
    }
    std::ranges::stable_sort(ordered, {}, &std::pair<size_t, const Profile*>::first);
    std::vector<const Profile*> profiles;
    std::ranges::copy(ordered | std::views::values, std::back_inserter(profiles));
    return profiles;
  }

 private:
  const ProfileTable& profiles_;
  const LoadedRecords& loaded_;
};

bool HasSwitchedOn(bool (Profile::*followsDefaults)() const, const Profile& profile, const Profile& before) {
  return !(profile.*followsDefaults)() && (before.*followsDefaults)();
}

// Planning, table by table

RowChange ProfileRow(const Profile& profile) {
  return {.kind = RecordKind::Profile,
          .key = profile.GetProfileId(),
          .state = profile.GetState(),
          .profileId = profile.GetProfileId(),
          .record = std::make_shared<Profile>(profile)};
}

void PlanNewProfiles(const ProfilesToSave& profiles, std::vector<RowChange>& plan) {
  for (const Profile* profile : profiles.InOrderOfLinks([](ChangeState state) { return state == ChangeState::New; })) {
    const Profile& before = profiles.Before(*profile);
    RowChange change = ProfileRow(*profile);
    std::ranges::copy_if(profile->GetBindings(), std::back_inserter(change.changed), [&](const ColumnBinding& column) {
      return IsNeverInherited(column) || column.read(*profile) != column.read(before);
    });
    std::ranges::copy(PinnedColumns(*profile, before, change.changed), std::back_inserter(change.changed));
    plan.push_back(std::move(change));
  }
}

void PlanChangedProfiles(const ProfilesToSave& profiles, std::vector<RowChange>& plan) {
  const auto isChanged = [](ChangeState state) {
    return state == ChangeState::Changed || state == ChangeState::Renamed;
  };
  for (const Profile* profile : profiles.InOrderOfLinks(isChanged)) {
    const Profile& before = profiles.Before(*profile);
    RowChange change = ProfileRow(*profile);
    change.changed = ChangedColumns(*profile, before);
    if (change.changed.empty()) continue;
    change.pinned = PinnedColumns(*profile, before, change.changed);
    change.loaded = std::make_shared<Profile>(before);
    plan.push_back(std::move(change));
  }
}

void PlanRemovedProfiles(const ProfilesToSave& profiles, const LoadedRecords& loaded, std::vector<RowChange>& plan) {
  const auto isRemoved = [](ChangeState state) { return state == ChangeState::Removed; };
  for (const Profile* profile : std::views::reverse(profiles.InOrderOfLinks(isRemoved))) {
    if (loaded.profiles.contains(profile->GetProfileId())) plan.push_back(ProfileRow(*profile));
  }
}

// A row beside the profiles, which is not inherited column by column. False when the record has not changed.
template <typename Record>
bool PlanRow(RecordKind kind, uint32_t key, uint32_t profileId, const Candidate<Record>& candidate, RowChange& change) {
  const Record& record = *candidate.record;
  change = {.kind = kind, .key = key, .state = record.GetState(), .profileId = profileId};
  if (change.state == ChangeState::Unchanged) return false;
  if (candidate.loaded != nullptr && !candidate.loaded->copied) {
    change.loaded = std::make_shared<Record>(candidate.loaded->values);
  }
  if (!change.IsRemoval()) {
    change.changed = change.loaded ? ChangedColumns(record, *change.loaded) : AllButTheKey(record);
    if (change.changed.empty()) return false;
  }
  change.record = std::make_shared<Record>(record);
  return true;
}

// A row that is only to be there: the profile makes the list its own in which the user has seen it.
template <typename Record>
RowChange PinnedRow(RecordKind kind, uint32_t key, uint32_t profileId, const Record& record) {
  return {.kind = kind, .key = key, .profileId = profileId, .record = std::make_shared<Record>(record)};
}

using PreferenceCandidates = std::map<std::pair<uint32_t, PreferenceId>, Candidate<Preference>>;

PreferenceCandidates FindPreferences(const PreferenceTable& table, const LoadedRecords& loaded) {
  PreferenceCandidates candidates;
  for (const auto& [profileId, list] : loaded.preferences) {
    for (const auto& [id, preference] : list) candidates[{profileId, id}] = {preference.record, &preference};
  }
  for (const auto& [id, preference] : table) {
    if (!preference) continue;
    auto& candidate = candidates[{preference->Fields().profileId, preference->GetPreferenceId()}];
    if (!candidate.record || preference->GetState() != ChangeState::Unchanged) candidate.record = preference;
  }
  return candidates;
}

void PlanPreferences(const PreferenceTable& table, const LoadedRecords& loaded, const ProfilesToSave& profiles,
                     std::set<uint32_t> toPin, std::vector<RowChange>& plan) {
  const PreferenceCandidates candidates = FindPreferences(table, loaded);
  std::set<PreferenceCandidates::key_type> planned;
  for (const auto& [key, candidate] : candidates) {
    const auto [profileId, id] = key;
    RowChange change;
    if (!PlanRow(RecordKind::Preference, static_cast<uint32_t>(id), profileId, candidate, change)) continue;
    planned.insert(key);
    plan.push_back(std::move(change));
    const Profile* const profile = profiles.Now(profileId);
    if (profile != nullptr && !profile->GetDefaultPreferences() && CanOwnPreferences(profileId)) {
      toPin.insert(profileId);
    }
  }
  for (const auto& [key, candidate] : candidates) {
    const auto [profileId, id] = key;
    if (!toPin.contains(profileId) || planned.contains(key) || (candidate.loaded && candidate.loaded->stored)) continue;
    plan.push_back(PinnedRow(RecordKind::Preference, static_cast<uint32_t>(id), profileId, *candidate.record));
  }
}

// The numbers of new entries are not those of entries that were loaded.
struct AutoStartKey {
  bool isNew;
  uint32_t profileId;
  uint32_t id;
  auto operator<=>(const AutoStartKey&) const = default;
};

using AutoStartCandidates = std::map<AutoStartKey, Candidate<AutoStartItem>>;

// Whether an entry was made for the user, who does not want it after all.
bool IsDropped(const AutoStartItem& item, const LoadedRecords& loaded) {
  const auto* const made = Find(loaded.newAutoStartItems, static_cast<uint32_t>(item.fields.profileId));
  return item.GetState() != ChangeState::New && made != nullptr &&
         made->contains(static_cast<uint32_t>(item.fields.id));
}

AutoStartCandidates FindAutoStart(const AutoStartTable& table, const LoadedRecords& loaded) {
  AutoStartCandidates candidates;
  for (const auto& [profileId, list] : loaded.autoStartItems) {
    for (const auto& [id, item] : list) candidates[{false, profileId, id}] = {item.record, &item};
  }
  for (const auto& [profileId, items] : loaded.newAutoStartItems) {
    for (const auto& [id, item] : items) {
      if (!IsDropped(*item, loaded)) candidates[{true, profileId, id}] = {item};
    }
  }
  for (const auto& [id, item] : table) {
    if (!item || IsDropped(*item, loaded)) continue;
    const bool isNew = item->GetState() == ChangeState::New;
    auto& candidate = candidates[{isNew, static_cast<uint32_t>(item->fields.profileId), id}];
    if (!candidate.record || item->GetState() != ChangeState::Unchanged) candidate.record = item;
  }
  return candidates;
}

void PlanAutoStart(const AutoStartTable& table, const LoadedRecords& loaded, std::set<uint32_t> toPin,
                   std::vector<RowChange>& plan) {
  const AutoStartCandidates candidates = FindAutoStart(table, loaded);
  std::map<AutoStartKey, RowChange> changes;
  for (const auto& [key, candidate] : candidates) {
    RowChange change;
    if (!PlanRow(RecordKind::AutoStartItem, key.id, key.profileId, candidate, change)) continue;
    // Part of a list would hide the rest of the one that it was copied from.
    toPin.insert(key.profileId);
    changes.emplace(key, std::move(change));
  }
  // Rows are numbered as they are written, and entries of the same order stand in the order of their numbers.
  for (const auto& [key, candidate] : candidates) {
    const bool isCopy = candidate.loaded != nullptr && !candidate.loaded->stored;
    const auto change = changes.find(key);
    if (change == changes.end()) {
      if (!isCopy || !toPin.contains(key.profileId)) continue;
      plan.push_back(PinnedRow(RecordKind::AutoStartItem, key.id, key.profileId, *candidate.record));
    } else if (!isCopy || !change->second.IsRemoval()) {
      if (isCopy) change->second.loaded = nullptr;
      plan.push_back(std::move(change->second));
    }
  }
}

void PlanConfigs(const ConfigTable& table, bool automatic, const LoadedRecords& loaded, std::vector<RowChange>& plan) {
  std::map<uint32_t, Candidate<ConfigSetting>> candidates;
  for (const auto& [key, config] : loaded.configs) {
    if (key.second == automatic) candidates[key.first] = {config.record, &config};
  }
  for (const auto& [id, config] : table) {
    if (config && config->GetState() != ChangeState::Unchanged) candidates[id].record = config;
  }
  for (const auto& [id, candidate] : candidates) {
    RowChange change;
    const RecordKind kind = automatic ? RecordKind::AutoConfig : RecordKind::ManualConfig;
    if (PlanRow(kind, id, id, candidate, change)) plan.push_back(std::move(change));
  }
}

}  // namespace

const ColumnBinding& ColumnNamed(const SQLRecord& record, std::wstring_view name) {
  const auto bindings = record.GetBindings();
  const auto found = std::ranges::find(bindings, name, &ColumnBinding::name);
  if (found == bindings.end()) throw std::out_of_range("a record has no such column");
  return *found;
}

ListsToPin FindListsToPin(const ProfileTable& profiles, const LoadedRecords& loaded) {
  const ProfilesToSave all(profiles, loaded);
  ListsToPin lists;
  for (const auto& [id, profile] : profiles) {
    if (!profile || profile->GetState() == ChangeState::Unchanged || all.IsRemoved(id)) continue;
    const Profile& before = all.Before(*profile);
    if (HasSwitchedOn(&Profile::GetDefaultPreferences, *profile, before) && CanOwnPreferences(id)) {
      lists.preferences.insert(id);
    }
    if (HasSwitchedOn(&Profile::GetDefaultAutostart, *profile, before)) lists.autoStartItems.insert(id);
  }
  return lists;
}

std::vector<RowChange> PlanSaving(const SettingsTables& tables, const LoadedRecords& loaded) {
  const ProfilesToSave profiles(tables.profiles, loaded);
  const ListsToPin lists = FindListsToPin(tables.profiles, loaded);
  std::vector<RowChange> plan;
  PlanNewProfiles(profiles, plan);
  PlanChangedProfiles(profiles, plan);
  PlanPreferences(tables.preferences, loaded, profiles, lists.preferences, plan);
  PlanAutoStart(tables.autoStartItems, loaded, lists.autoStartItems, plan);
  PlanConfigs(tables.manualConfigs, false, loaded, plan);
  PlanConfigs(tables.autoConfigs, true, loaded, plan);
  std::erase_if(plan, [&](const RowChange& change) {
    return profiles.IsRemoved(change.profileId) || profiles.IsDropped(change.profileId);
  });
  PlanRemovedProfiles(profiles, loaded, plan);
  return plan;
}
