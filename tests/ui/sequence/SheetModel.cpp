#include "tests/ui/sequence/SheetModel.h"

#include <utility>

namespace {

std::wstring RemovedMeanwhile(const std::wstring& name) {
  return L"The login profile \"" + name +
         L"\" was removed by another program meanwhile. What was changed in it could not be saved.";
}

std::wstring DefaultsRemovedMeanwhile(const std::wstring& name) {
  return L"The login profile \"" + name +
         L"\" could not be saved: the defaults that it is to follow were removed by another program meanwhile.";
}

std::wstring ConnectedMeanwhile(const std::wstring& name) {
  return L"The login profile \"" + name + L"\" could not be removed: it is connected by now.";
}

std::wstring NotRemoved(const std::wstring& name) {
  return L"The login profile \"" + name + L"\" could not be removed: other profiles follow it.";
}

}  // namespace

SheetModel::SheetModel(const ProfileTable& loaded, uint32_t first, const StoredSettings& stored)
    : profiles_(loaded, stored), chosen_(first), general_(stored) {
  ShowPage(stored);
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
  switch (page_) {
    case SheetPage::General:
      return general_.Show(Chosen(), stored);
    case SheetPage::Preferences:
      return ShowPreferences(stored);
    case SheetPage::Timeouts:
      return timeouts_.Show(Chosen(), profiles_.Columns(Chosen().linkProfile));
    case SheetPage::WiFi:
      break;
  }
}

std::optional<std::wstring> SheetModel::LeavePage() {
  return page_ == SheetPage::WiFi ? wiFi_.LeavePage(Chosen()) : LeaveProfile();
}

std::optional<std::wstring> SheetModel::LeaveProfile() {
  if (page_ == SheetPage::Timeouts) return timeouts_.Leave(Chosen());
  return page_ == SheetPage::WiFi ? wiFi_.LeaveProfile(Chosen()) : std::nullopt;
}

void SheetModel::Rename(const std::wstring& name, const StoredSettings& stored) {
  Chosen().name = name;
  ShowPage(stored);
}

void SheetModel::Remove(const StoredSettings& stored) {
  profiles_.Remove(chosen_);
  Choose(profiles_.Selectable().begin()->first, stored);
}

WizardModel SheetModel::OpenServersWizard(const StoredSettings& stored) {
  return {Chosen(), servers_.Read(chosen_, !profiles_.IsNew(chosen_), stored)};
}

WizardModel SheetModel::OpenNewWizard(const StoredSettings& stored) {
  const uint32_t id = profiles_.NextId();
  const uint32_t defaults = profiles_.FirstDefaults(stored);
  WizardModel entries(profiles_.Columns(defaults), servers_.Read(id, false, stored));
  entries.id = id;
  entries.defaults = defaults;
  return entries;
}

void SheetModel::ConfigureNetwork(const WizardModel& entries, const StoredSettings& stored) {
  entries.StoreUserIdAndService(Chosen());
  ShowPage(stored);
}

void SheetModel::ConfigureServers(const WizardModel& entries, const StoredSettings& stored) {
  entries.StoreServers(Chosen(), servers_.Read(chosen_, !profiles_.IsNew(chosen_), stored));
  ShowPage(stored);
}

void SheetModel::AddNew(const WizardModel& entries, const StoredSettings& stored) {
  ProfileColumns profile = entries.MakeProfile(servers_.Read(entries.id, false, stored));
  if (entries.source != 0) {
    LookAtCopied(entries.source, stored);
    profile.defaultAutostart = profiles_.Columns(entries.source).defaultAutostart;
    if (entries.source <= kLastWithOwnPreferences) {
      profile.defaultPreferences = profiles_.Columns(entries.source).defaultPreferences;
      preferences_.Copy(entries.source, entries.id, entries.defaults, stored);
    }
    autoStart_.Copy(entries.source, entries.id);
  }
  profiles_.Add(profile);
  Choose(entries.id, stored);
}

SheetModel::Copied SheetModel::LookAtCopied(uint32_t source, const StoredSettings& stored) {
  const uint32_t first = profiles_.FirstOfChain(source);
  const size_t preferences = preferences_.CountOwn(source, first, stored);
  const AutoStartModel::List& list = autoStart_.Read(source, first, stored);
  Copied copied{.columns = profiles_.Columns(source),
                .preferences = source <= kLastWithOwnPreferences ? preferences : 0,
                .hasAutoStartList = list.own && !list.rows.empty()};
  for (const Row& row : list.rows) {
    const bool isProgram = row.at("RecordType") == "2";
    if (list.own && isProgram) copied.programs.push_back(row.at("Name"));
  }
  return copied;
}

void SheetModel::ClickOverridePreferences(const StoredSettings& stored) {
  Chosen().defaultPreferences = !Chosen().defaultPreferences;
  ShowPreferences(stored);
}

void SheetModel::ShowPreferences(const StoredSettings& stored) {
  const bool showsOwn = OwnPreferences() && chosen_ <= kLastWithOwnPreferences;
  const uint32_t shown = showsOwn ? chosen_ : Chosen().linkProfile;
  preferences_.Show(shown, profiles_.FirstOfChain(shown), OwnPreferences(), stored);
}

void SheetModel::Toggle(int32_t id) {
  if (OwnPreferences()) preferences_.Toggle(id);
}

void SheetModel::ClickOverrideTimeouts() {
  Chosen().defaultTimeouts = timeouts_.boxTicked;
  timeouts_.Show(Chosen(), profiles_.Columns(Chosen().linkProfile));
}

void SheetModel::ClickThreshold() {
  timeouts_.thresholdOn = !timeouts_.thresholdOn;
  Chosen().thresholdOnOff = timeouts_.thresholdOn;
}

SheetModel::Outcome SheetModel::Saved(StoredSettings meanwhile) const {
  Outcome outcome{std::move(meanwhile), {}};
  SaveNewProfiles(outcome);
  SaveLoadedProfiles(outcome);
  const uint32_t connected = outcome.stored.ConnectedProfile();
  if (outcome.stored.profiles.contains(connected) && profiles_.IsRemoved(connected) && !profiles_.IsNew(connected)) {
    outcome.lost.push_back(ConnectedMeanwhile(profiles_.Columns(connected).name));
  }
  for (const std::wstring& name : profiles_.SaveRemovals(outcome.stored)) outcome.lost.push_back(NotRemoved(name));
  return outcome;
}

void SheetModel::SaveNewProfiles(Outcome& outcome) const {
  StoredSettings& stored = outcome.stored;
  for (const auto& [id, storedId] : profiles_.StoredIds(stored)) {
    const ProfileColumns& profile = profiles_.Columns(id);
    if (!stored.profiles.contains(profile.linkProfile)) {
      outcome.lost.push_back(DefaultsRemovedMeanwhile(profile.name));
      continue;
    }
    stored.profiles[storedId] = profiles_.NewRow(id, storedId);
    SavePreferences(id, storedId, &stored.preferences[storedId]);
    autoStart_.Save(id, storedId, profile.linkProfile, !profile.defaultAutostart, stored);
    servers_.Save(id, storedId, &stored);
  }
}

void SheetModel::SaveLoadedProfiles(Outcome& outcome) const {
  StoredSettings& stored = outcome.stored;
  for (const auto& [id, profile] : profiles_.All()) {
    if (profiles_.IsNew(id) || profiles_.IsRemoved(id)) continue;
    const auto row = stored.profiles.find(id);
    const bool exists = row != stored.profiles.end();
    bool changed = profiles_.Save(id, exists ? &row->second : nullptr);
    changed |= SavePreferences(id, id, exists ? &stored.preferences[id] : nullptr);
    changed |= servers_.Save(id, id, exists ? &stored : nullptr);
    if (!exists && changed) outcome.lost.push_back(RemovedMeanwhile(profile.GetName()));
  }
}

bool SheetModel::SavePreferences(uint32_t id, uint32_t storedId, PreferenceRows* rows) const {
  return preferences_.Save({.profile = id,
                            .storedId = storedId,
                            .overrides = !profiles_.Columns(id).defaultPreferences && id <= kLastWithOwnPreferences,
                            .overrodeBefore = !profiles_.Before(id).defaultPreferences},
                           rows);
}
