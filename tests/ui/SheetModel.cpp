#include "tests/ui/SheetModel.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include "Database/Profiles/Preference.h"

namespace {

constexpr uint32_t kLastRoot = 2000;
constexpr uint32_t kLastWithOwnPreferences = 10000;

constexpr wchar_t kWrongStrength[] = L"Please enter the signal strength percentage value between 10 and 90";

// A profile's own, for the rest those of the profile that it is linked to, and what nobody stores as it is built in.
States InForce(uint32_t id, const StoredSettings& stored) {
  States states;
  while (id != 0) {
    if (const auto own = stored.preferences.find(id); own != stored.preferences.end()) {
      states.insert(own->second.begin(), own->second.end());
    }
    const auto row = stored.profiles.find(id);
    const std::string link = row != stored.profiles.end() ? row->second.at("LinkProfile") : "NULL";
    id = link != "NULL" ? static_cast<uint32_t>(std::stoul(link)) : 0;
  }
  for (const PreferenceGroup& group : MakePreferenceTree(true)) {
    if (group.kind == GroupKind::Choice) {
      states.try_emplace(static_cast<int32_t>(group.id), 0);
    } else {
      for (const PreferenceEntry& entry : group.entries) {
        states.try_emplace(static_cast<int32_t>(entry.id), entry.state);
      }
    }
  }
  return states;
}

// Calls `action` with the name and the member of each column of a page.
template <typename Action>
void OnTimeouts(Action action) {
  action("DefaultTimeouts", &ProfileColumns::defaultTimeouts);
  action("DurationTime", &ProfileColumns::durationTime);
  action("ThresholdOnOff", &ProfileColumns::thresholdOnOff);
  action("ThresholdBytes", &ProfileColumns::thresholdBytes);
  action("ThresholdTimeOut", &ProfileColumns::thresholdTimeOut);
  action("WarnTime", &ProfileColumns::warnTime);
}

template <typename Action>
void OnWiFi(Action action) {
  action("OverrideAutoReconnectDefaults", &ProfileColumns::overrideAutoReconnectDefaults);
  action("OverrideARMode", &ProfileColumns::overrideARMode);
  action("OverrideASWiFiMode", &ProfileColumns::overrideASWiFiMode);
  action("OverridePromptUserToSwitch", &ProfileColumns::overridePromptUserToSwitch);
  action("OverrideSwitchInterval", &ProfileColumns::overrideSwitchInterval);
  action("OverrideSignalStrength", &ProfileColumns::overrideSignalStrength);
  action("AdvancedAutoReconnectSettings", &ProfileColumns::advancedAutoReconnectSettings);
}

}  // namespace

SheetModel::SheetModel(const ProfileTable& profiles) {
  for (const auto& [id, profile] : profiles) profiles_.emplace(id, *profile);
  before_ = profiles_;
}

void SheetModel::Show(SheetPage page, const StoredSettings& stored) {
  page_ = page;
  if (page == SheetPage::Timeouts && !std::exchange(timeoutsWereCreated_, true)) ShowPage(stored);
  ShowPage(stored);
}

void SheetModel::Choose(uint32_t profile, const StoredSettings& stored) {
  chosen_ = profile;
  ShowPage(stored);
}

void SheetModel::ShowPage(const StoredSettings& stored) {
  if (page_ == SheetPage::Preferences) FillTree(stored);
  if (page_ == SheetPage::Timeouts) timeouts_.Show(Chosen(), Columns(Chosen().linkProfile));
}

std::optional<std::wstring> SheetModel::LeavePage() {
  auto refusal = LeaveProfile();
  if (page_ == SheetPage::WiFi) wiFiHasGivenWay_ = !refusal;
  return refusal;
}

std::optional<std::wstring> SheetModel::LeaveProfile() {
  if (page_ == SheetPage::Timeouts) return timeouts_.Leave(Chosen());
  if (page_ != SheetPage::WiFi || StrengthCanStand()) return std::nullopt;
  wiFiHasGivenWay_ = false;
  return kWrongStrength;
}

std::optional<std::wstring> SheetModel::LeaveField() {
  return wiFiHasGivenWay_ || StrengthCanStand() ? std::nullopt : std::optional(kWrongStrength);
}

void SheetModel::ClickOverridePreferences(const StoredSettings& stored) {
  Chosen().defaultPreferences = !Chosen().defaultPreferences;
  FillTree(stored);
}

// The tree is filled anew, with what was toggled before.
void SheetModel::FillTree(const StoredSettings& stored) {
  loaded_ = OwnPreferences() && chosen_ <= kLastWithOwnPreferences ? chosen_ : Chosen().linkProfile;
  if (!tables_.contains(loaded_)) {
    Table& table = tables_[loaded_];
    table.loaded = table.now = InForce(loaded_, stored);
    if (const auto own = stored.preferences.find(loaded_); own != stored.preferences.end()) {
      for (const auto& [id, state] : own->second) table.own.insert(id);
    }
  }
  const States& now = tables_.at(loaded_).now;
  shown_.clear();
  for (const PreferenceGroup& group : tree_) {
    for (const PreferenceEntry& entry : group.entries) {
      const auto id = static_cast<int32_t>(entry.id);
      if (group.kind == GroupKind::Choice) {
        shown_[id] = now.at(static_cast<int32_t>(group.id)) == id ? Preference::kOn : Preference::kOff;
      } else {
        shown_[id] = now.at(id);
      }
    }
  }
  // Of the machine, which has not set it.
  if (OwnPreferences()) shown_[static_cast<int32_t>(PreferenceId::BypassHardwareRendering)] = Preference::kOff;
}

void SheetModel::Toggle(int32_t id) {
  if (!OwnPreferences()) return;
  States& now = tables_.at(loaded_).now;
  const PreferenceGroup& group = GroupOf(id);
  if (group.kind == GroupKind::Choice) {
    const bool wasOn = shown_[id] == Preference::kOn;
    for (const PreferenceEntry& entry : group.entries) shown_[static_cast<int32_t>(entry.id)] = Preference::kOff;
    if (!wasOn) shown_[id] = Preference::kOn;
    now[static_cast<int32_t>(group.id)] = id;
  } else {
    shown_[id] = now[id] == Preference::kOn ? Preference::kOff : Preference::kOn;
    now[id] = shown_[id];
  }
}

Images SheetModel::ExpectedImages() const {
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

const PreferenceGroup& SheetModel::GroupOf(int32_t id) const {
  for (const PreferenceGroup& group : tree_) {
    for (const PreferenceEntry& entry : group.entries) {
      if (static_cast<int32_t>(entry.id) == id) return group;
    }
  }
  throw std::out_of_range("no such entry");
}

void SheetModel::ClickOverrideTimeouts() {
  Chosen().defaultTimeouts = !Chosen().defaultTimeouts;
  timeouts_.Show(Chosen(), Columns(Chosen().linkProfile));
}

void SheetModel::ClickThreshold() {
  timeouts_.thresholdOn = !timeouts_.thresholdOn;
  Chosen().thresholdOnOff = timeouts_.thresholdOn;
}

SheetModel::Outcome SheetModel::Saved(StoredSettings meanwhile) const {
  Outcome outcome{std::move(meanwhile), {}};
  StoredSettings& stored = outcome.stored;
  for (const auto& [id, profile] : profiles_) {
    if (const auto row = stored.profiles.find(id); row != stored.profiles.end()) {
      SaveProfile(id, &row->second);
      States rows = stored.preferences.contains(id) ? stored.preferences.at(id) : States();
      if (SavePreferences(id, &rows)) stored.preferences[id] = rows;
    } else if (SaveProfile(id, nullptr) || SavePreferences(id, nullptr)) {
      outcome.lost.push_back(
          L"The login profile \"" + profile.GetName() +
          L"\" was removed by another program meanwhile. What was changed in it could not be saved.");
    }
  }
  return outcome;
}

// Puts what the user has changed into the row, and of a page that the profile overrides what the row has no value for;
// the rest goes on to be stored or inherited as it is. Whether there was anything to put; nowhere without a row.
bool SheetModel::SaveProfile(uint32_t id, Row* row) const {
  if (id <= kLastRoot) return false;  // the page only shows them
  const ProfileColumns& before = before_.at(id).Columns();
  const ProfileColumns& now = profiles_.at(id).Columns();
  const auto differs = [&](auto member) { return before.*member != now.*member; };
  const auto set = [&](const char* name, auto member) {
    if (row != nullptr) (*row)[name] = std::to_string(now.*member);
  };
  bool changes = differs(&ProfileColumns::defaultPreferences);
  if (changes) set("DefaultPreferences", &ProfileColumns::defaultPreferences);

  const auto savePage = [&](auto onPage, bool overrides) {
    bool changed = false;
    onPage([&](const char*, auto member) { changed |= differs(member); });
    if (!changed) return;
    changes = true;
    onPage([&](const char* name, auto member) {
      const bool pins = overrides && row != nullptr && row->at(name) == "NULL";
      if (differs(member) || pins) set(name, member);
    });
  };
  savePage([](auto action) { OnTimeouts(action); }, !now.defaultTimeouts);
  savePage([](auto action) { OnWiFi(action); }, now.overrideAutoReconnectDefaults);
  return changes;
}

// The same for its preferences, of which it makes the whole list its own that the user saw.
bool SheetModel::SavePreferences(uint32_t id, States* rows) const {
  const auto found = tables_.find(id);
  if (found == tables_.end()) return false;
  const Table& table = found->second;
  const bool overrides = !profiles_.at(id).GetDefaultPreferences() && id <= kLastWithOwnPreferences;
  bool changed = false;
  for (const auto& [preference, state] : table.now) {
    if (state == table.loaded.at(preference)) continue;
    changed = true;
    if (rows != nullptr) (*rows)[preference] = state;
  }
  const bool pins = overrides && (changed || before_.at(id).GetDefaultPreferences());
  if (pins && rows != nullptr) {
    for (const auto& [preference, state] : table.now) {
      if (!table.own.contains(preference)) rows->try_emplace(preference, state);
    }
  }
  return changed || pins;
}
