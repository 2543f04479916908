#include "tests/ui/sequence/SheetModel.h"

#include <utility>

namespace {

std::wstring RemovedMeanwhile(const std::wstring& name) {
  return L"The login profile \"" + name +
         L"\" was removed by another program meanwhile. What was changed in it could not be saved.";
}

std::wstring NotRemoved(const std::wstring& name) {
  return L"The login profile \"" + name + L"\" could not be removed: other profiles follow it.";
}

}  // namespace

SheetModel::SheetModel(const ProfileTable& loaded, uint32_t first, const StoredSettings& stored)
    : profiles_(loaded), chosen_(first), general_(stored) {
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

void SheetModel::ClickOverridePreferences(const StoredSettings& stored) {
  Chosen().defaultPreferences = !Chosen().defaultPreferences;
  ShowPreferences(stored);
}

void SheetModel::ShowPreferences(const StoredSettings& stored) {
  const bool showsOwn = OwnPreferences() && chosen_ <= kLastWithOwnPreferences;
  const uint32_t shown = showsOwn ? chosen_ : Chosen().linkProfile;
  preferences_.Show(shown, shown, OwnPreferences(), stored);
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
  StoredSettings& stored = outcome.stored;
  for (const auto& [id, profile] : profiles_.All()) {
    if (profiles_.IsRemoved(id)) continue;
    const auto row = stored.profiles.find(id);
    const bool exists = row != stored.profiles.end();
    const bool changed = profiles_.Save(id, exists ? &row->second : nullptr);
    const bool toggled = SavePreferences(id, exists ? &stored.preferences[id] : nullptr);
    if (!exists && (changed || toggled)) outcome.lost.push_back(RemovedMeanwhile(profile.GetName()));
  }
  for (const std::wstring& name : profiles_.SaveRemovals(stored)) outcome.lost.push_back(NotRemoved(name));
  return outcome;
}

bool SheetModel::SavePreferences(uint32_t id, PreferenceRows* rows) const {
  return preferences_.Save({.profile = id,
                            .storedId = id,
                            .overrides = !profiles_.Columns(id).defaultPreferences && id <= kLastWithOwnPreferences,
                            .overrodeBefore = !profiles_.Before(id).defaultPreferences},
                           rows);
}
