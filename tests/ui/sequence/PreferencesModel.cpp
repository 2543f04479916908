#include "tests/ui/sequence/PreferencesModel.h"

#include <stdexcept>
#include <string>

#include "Database/Profiles/Preference.h"

namespace {

int32_t StateOf(const Row& row) { return std::stoi(row.at("State")); }

Row BuiltIn(int32_t id, int32_t state) {
  return {
      {"PreferenceId", std::to_string(id)}, {"State", std::to_string(state)}, {"Visible", "1"}, {"IPSecRequired", "0"}};
}

// A profile's own, for the rest those of the profile that it is linked to, and what nobody stores as it is built in.
PreferenceRows InForce(uint32_t profile, const StoredSettings& stored) {
  PreferenceRows rows;
  for (uint32_t id = profile; id != 0; id = stored.LinkOf(id)) {
    if (const auto own = stored.preferences.find(id); own != stored.preferences.end()) {
      rows.insert(own->second.begin(), own->second.end());
    }
  }
  for (const PreferenceGroup& group : MakePreferenceTree(true)) {
    const auto choice = static_cast<int32_t>(group.id);
    if (group.kind == GroupKind::Choice) {
      rows.try_emplace(choice, BuiltIn(choice, 0));
    } else {
      for (const PreferenceEntry& entry : group.entries) {
        const auto id = static_cast<int32_t>(entry.id);
        rows.try_emplace(id, BuiltIn(id, entry.state));
      }
    }
  }
  return rows;
}

Row OfProfile(Row row, uint32_t profile) {
  row["ProfileId"] = std::to_string(profile);
  return row;
}

}  // namespace

PreferencesModel::List& PreferencesModel::Read(uint32_t profile, uint32_t first, const StoredSettings& stored) {
  const auto [found, isNew] = lists_.try_emplace(profile);
  List& list = found->second;
  if (!isNew) return list;
  list.loaded = list.now = InForce(first, stored);
  if (const auto own = stored.preferences.find(profile); own != stored.preferences.end() && first == profile) {
    for (const auto& [id, row] : own->second) list.own.insert(id);
  }
  return list;
}

std::set<int32_t> PreferencesModel::List::AllOwn() const {
  std::set<int32_t> all = own;
  all.insert(toggled.begin(), toggled.end());
  all.insert(copied.begin(), copied.end());
  return all;
}

size_t PreferencesModel::CountOwn(uint32_t profile, uint32_t first, const StoredSettings& stored) {
  return Read(profile, first, stored).AllOwn().size();
}

void PreferencesModel::Copy(uint32_t source, uint32_t profile, uint32_t first, const StoredSettings& stored) {
  const List from = lists_.at(source);
  List& list = Read(profile, first, stored);
  list.copied = from.AllOwn();
  for (const int32_t id : list.copied) list.loaded[id] = list.now[id] = from.now.at(id);
}

void PreferencesModel::Show(uint32_t profile, uint32_t first, bool own, const StoredSettings& stored) {
  listed_ = profile;
  const PreferenceRows& now = Read(profile, first, stored).now;
  shown_.clear();
  for (const PreferenceGroup& group : tree_) {
    for (const PreferenceEntry& entry : group.entries) {
      const auto id = static_cast<int32_t>(entry.id);
      if (group.kind == GroupKind::Choice) {
        const bool isChosen = StateOf(now.at(static_cast<int32_t>(group.id))) == id;
        shown_[id] = isChosen ? Preference::kOn : Preference::kOff;
      } else {
        shown_[id] = StateOf(now.at(id));
      }
    }
  }
  // Of the machine, which has not set it.
  if (own) shown_[static_cast<int32_t>(PreferenceId::BypassHardwareRendering)] = Preference::kOff;
}

void PreferencesModel::Toggle(int32_t id) {
  List& list = lists_.at(listed_);
  const auto store = [&](int32_t preference, int32_t state) {
    list.now[preference]["State"] = std::to_string(state);
    list.toggled.insert(preference);
  };
  const PreferenceGroup& group = GroupOf(id);
  if (group.kind == GroupKind::Choice) {
    const bool wasOn = shown_[id] == Preference::kOn;
    for (const PreferenceEntry& entry : group.entries) shown_[static_cast<int32_t>(entry.id)] = Preference::kOff;
    if (!wasOn) shown_[id] = Preference::kOn;
    store(static_cast<int32_t>(group.id), id);
  } else {
    shown_[id] = StateOf(list.now.at(id)) == Preference::kOn ? Preference::kOff : Preference::kOn;
    store(id, shown_[id]);
  }
}

Images PreferencesModel::ExpectedImages() const {
  Images images;
  for (const PreferenceGroup& group : tree_) {
    const int off = group.kind == GroupKind::Choice ? 7 : 1;
    for (const PreferenceEntry& entry : group.entries) {
      if (entry.id == PreferenceId::PreventMultiHoming) continue;  // not authorized here
      const auto id = static_cast<int32_t>(entry.id);
      images.emplace_back(id, shown_.at(id) == Preference::kOn ? off + 1 : off);
    }
  }
  return images;
}

const PreferenceGroup& PreferencesModel::GroupOf(int32_t id) const {
  for (const PreferenceGroup& group : tree_) {
    for (const PreferenceEntry& entry : group.entries) {
      if (static_cast<int32_t>(entry.id) == id) return group;
    }
  }
  throw std::out_of_range("no such entry");
}

bool PreferencesModel::Save(const Owner& owner, PreferenceRows* rows) const {
  const auto found = lists_.find(owner.profile);
  if (found == lists_.end()) return false;
  const List& list = found->second;
  bool changed = false;
  for (const auto& [id, row] : list.now) {
    if (row == list.loaded.at(id) && !list.copied.contains(id)) continue;
    changed = true;
    if (rows == nullptr) continue;
    const auto [stored, isNew] = rows->try_emplace(id, OfProfile(row, owner.storedId));
    if (!isNew) stored->second["State"] = row.at("State");
  }
  const bool pins = owner.overrides && (changed || !owner.overrodeBefore);
  if (pins && rows != nullptr) {
    for (const auto& [id, row] : list.now) {
      if (!list.own.contains(id)) rows->try_emplace(id, OfProfile(row, owner.storedId));
    }
  }
  return changed || pins;
}
