#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Database/Profiles/Profile.h"
#include "LoginProperties/Preferences/PreferenceTree.h"
#include "tests/ui/OtherConnection.h"
#include "tests/ui/TimeoutsModel.h"

/// Images of the preference tree's entries, by their ids.
using Images = std::vector<std::pair<int32_t, int>>;

enum class SheetPage { Other, Preferences, Timeouts, WiFi };

/// What a user can see on the sheet, what its records hold, and what is to be saved, as plainly as it can be said.
class SheetModel {
 public:
  explicit SheetModel(const ProfileTable& profiles);

  uint32_t ChosenId() const { return chosen_; }
  SheetPage Page() const { return page_; }
  const std::map<uint32_t, Profile>& Profiles() const { return profiles_; }
  ProfileColumns& Chosen() { return Columns(chosen_); }

  /// Another page comes to the front, or shows another profile. Preferences are read from the database when they are
  /// shown for the first time.
  void Show(SheetPage page, const StoredSettings& stored);
  void Choose(uint32_t profile, const StoredSettings& stored);

  /// The page is asked to give way, to another page and to OK or to another profile; what the user is told when it
  /// does not.
  std::optional<std::wstring> LeavePage();
  std::optional<std::wstring> LeaveProfile();

  // Preferences
  bool OwnPreferences() { return !Chosen().defaultPreferences; }
  void ClickOverridePreferences(const StoredSettings& stored);
  void Toggle(int32_t id);
  Images ExpectedImages() const;

  // Timeouts
  TimeoutsModel& Timeouts() { return timeouts_; }

  void ClickOverrideTimeouts();
  void ClickThreshold();

  // Wi-Fi Switching
  bool OwnWiFi() { return Chosen().smUserMayOverrideAutoReconnectDefaults && Chosen().overrideAutoReconnectDefaults; }
  bool Automatic() { return OwnWiFi() ? Chosen().overrideARMode : Chosen().smAutoReconnectMode; }
  bool Hotspot() { return Automatic() && (OwnWiFi() ? Chosen().overrideASWiFiMode : Chosen().smAutoSwitchWiFiMode); }
  bool OwnDetails() { return OwnWiFi() && Hotspot(); }
  bool StrengthCanStand() {
    return !OwnWiFi() || (Chosen().overrideSignalStrength >= 10 && Chosen().overrideSignalStrength <= 90);
  }

  /// The focus leaves a field of the page; what the user is told then. Fields are checked at once until the page has
  /// given way for the first time.
  std::optional<std::wstring> LeaveField();

  /// What saving makes of what others have stored by then, and what it has to tell.
  struct Outcome {
    StoredSettings stored;
    std::vector<std::wstring> lost;
  };
  Outcome Saved(StoredSettings meanwhile) const;

 private:
  // The preferences of a profile.
  struct Table {
    States loaded;          // as they were shown first
    std::set<int32_t> own;  // those of them that the profile stored itself
    States now;
  };

  ProfileColumns& Columns(uint32_t id) { return profiles_.at(id).Columns(); }
  void ShowPage(const StoredSettings& stored);
  void FillTree(const StoredSettings& stored);
  const PreferenceGroup& GroupOf(int32_t id) const;
  bool SaveProfile(uint32_t id, Row* row) const;
  bool SavePreferences(uint32_t id, States* rows) const;

  const PreferenceTree tree_ = MakePreferenceTree(false);
  std::map<uint32_t, Profile> profiles_;
  std::map<uint32_t, Profile> before_;
  uint32_t chosen_ = 0;
  SheetPage page_ = SheetPage::Other;

  std::map<uint32_t, Table> tables_;  // of the profiles whose preferences were shown
  uint32_t loaded_ = 0;               // the one whose preferences the tree shows
  States shown_;

  TimeoutsModel timeouts_;
  bool timeoutsWereCreated_ = false;  // a page is filled when it is created, and again when it is shown

  bool wiFiHasGivenWay_ = false;
};
