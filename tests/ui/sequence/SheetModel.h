#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Database/Profiles/Profile.h"
#include "tests/ui/sequence/AutoStartModel.h"
#include "tests/ui/sequence/GeneralModel.h"
#include "tests/ui/sequence/PreferencesModel.h"
#include "tests/ui/sequence/ProfilesModel.h"
#include "tests/ui/sequence/ServersModel.h"
#include "tests/ui/sequence/StoredSettings.h"
#include "tests/ui/sequence/TimeoutsModel.h"
#include "tests/ui/sequence/WiFiModel.h"
#include "tests/ui/sequence/WizardModel.h"

enum class SheetPage { General, Preferences, Timeouts, WiFi };

/// What a user can see on the sheet, what its records hold, and what is to be saved, as plainly as it can be said.
class SheetModel {
 public:
  /// The sheet opens with these profiles over a database, on the "General" page.
  SheetModel(const ProfileTable& loaded, uint32_t first, const StoredSettings& stored);

  uint32_t ChosenId() const { return chosen_; }
  SheetPage Page() const { return page_; }
  const ProfilesModel& Profiles() const { return profiles_; }
  ProfileColumns& Chosen() { return profiles_.Columns(chosen_); }

  /// Another page comes to the front, or shows another profile.
  void Show(SheetPage page, const StoredSettings& stored);
  void Choose(uint32_t profile, const StoredSettings& stored);

  /// The page is asked to give way, to another page and to OK or to another profile; what the user is told when it
  /// does not.
  std::optional<std::wstring> LeavePage();
  std::optional<std::wstring> LeaveProfile();

  // General
  const GeneralModel& General() const { return general_; }
  void Rename(const std::wstring& name, const StoredSettings& stored);
  void Remove(const StoredSettings& stored);

  // What the wizards of the page show at first, and what finishing them does.
  WizardModel OpenNetworkWizard() { return {Chosen(), {}}; }
  WizardModel OpenServersWizard(const StoredSettings& stored);
  WizardModel OpenNewWizard(const StoredSettings& stored);
  void ConfigureNetwork(const WizardModel& entries, const StoredSettings& stored);
  void ConfigureServers(const WizardModel& entries, const StoredSettings& stored);
  void AddNew(const WizardModel& entries, const StoredSettings& stored);

  /// What a new profile would get copies of, which the wizard shows.
  struct Copied {
    ProfileColumns columns;
    size_t preferences = 0;
    bool hasAutoStartList = false;
    std::vector<std::string> programs{};
  };
  Copied LookAtCopied(uint32_t source, const StoredSettings& stored);

  // Preferences
  bool OwnPreferences() { return !Chosen().defaultPreferences; }
  void ClickOverridePreferences(const StoredSettings& stored);
  void Toggle(int32_t id);
  const PreferencesModel& Preferences() const { return preferences_; }

  // Timeouts
  TimeoutsModel& Timeouts() { return timeouts_; }
  void ClickOverrideTimeouts();
  void ClickThreshold();

  // Wi-Fi Switching
  const WiFiModel& WiFi() const { return wiFi_; }
  bool OwnWiFi() { return WiFiModel::Overrides(Chosen()); }
  bool OwnDetails() { return WiFiModel::OwnDetails(Chosen()); }

  /// What saving makes of what others have stored by then, and what it has to tell.
  struct Outcome {
    StoredSettings stored;
    std::vector<std::wstring> lost;
  };
  Outcome Saved(StoredSettings meanwhile) const;

 private:
  void ShowPage(const StoredSettings& stored);
  void ShowPreferences(const StoredSettings& stored);
  void SaveNewProfiles(Outcome& outcome) const;
  void SaveLoadedProfiles(Outcome& outcome) const;
  bool SavePreferences(uint32_t id, uint32_t storedId, PreferenceRows* rows) const;

  ProfilesModel profiles_;
  uint32_t chosen_;
  SheetPage page_ = SheetPage::General;
  GeneralModel general_;
  PreferencesModel preferences_;
  AutoStartModel autoStart_;
  ServersModel servers_;
  TimeoutsModel timeouts_;
  bool timeoutsWereCreated_ = false;  // a page is filled when it is created, and again when it is shown
  WiFiModel wiFi_;
};
