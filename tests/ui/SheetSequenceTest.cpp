// Thousands of random steps of a user on the real sheet, beside a plain model of the records: at any time the pages
// show the values of the chosen profile and of no other, and in the end the database differs in what was changed alone.

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "LoginProperties/Preferences/PreferenceControls.h"
#include "LoginProperties/Preferences/PreferenceTree.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/WiFiSwitching/AutoReconnectControls.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/Endurance.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TreeItems.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/SheetDriver.h"
#include "WaylineDll/Host.h"

namespace {

constexpr int kStepsOnASheet = 100;
constexpr uint32_t kLastRoot = 2000;
constexpr uint32_t kLastWithOwnPreferences = 10000;
constexpr wchar_t kPreferences[] = L"Preferences";
constexpr wchar_t kWiFi[] = L"Wi-Fi Switching";

using States = std::map<int32_t, int32_t>;            // of preferences, by their ids
using Row = std::map<std::string, std::string>;       // texts of a profile's columns
using PreferenceRows = std::map<uint32_t, States>;    // by profile
using Images = std::vector<std::pair<int32_t, int>>;  // of the tree's entries, by their ids
using Flag = bool ProfileColumns::*;

int SheetsToOpen() { return FullSize() ? 100 : 10; }

uint64_t Seed() {
  const char* const seed = std::getenv("PAVISE_SEED");
  return seed != nullptr ? std::stoull(seed) : std::random_device()();
}

// What a user can see, and what is to be saved, as plainly as it can be said.
class Model {
 public:
  Model(const ProfileTable& profiles, PreferenceRows rows) : rows_(std::move(rows)) {
    for (const auto& [id, profile] : profiles) profiles_[id] = profile->Columns();
    before_ = profiles_;
  }

  ProfileColumns& Chosen() { return profiles_.at(chosen); }
  const ProfileColumns& Profile(uint32_t id) const { return profiles_.at(id); }
  bool OwnPreferences() { return !Chosen().defaultPreferences; }
  bool OwnWiFi() { return Chosen().smUserMayOverrideAutoReconnectDefaults && Chosen().overrideAutoReconnectDefaults; }
  bool Automatic() { return OwnWiFi() ? Chosen().overrideARMode : Chosen().smAutoReconnectMode; }
  bool Hotspot() { return Automatic() && (OwnWiFi() ? Chosen().overrideASWiFiMode : Chosen().smAutoSwitchWiFiMode); }
  bool OwnDetails() { return OwnWiFi() && Hotspot(); }

  // The tree is filled anew, with what was toggled before.
  void FillTree() {
    loaded_ =
        OwnPreferences() && chosen <= kLastWithOwnPreferences ? chosen : static_cast<uint32_t>(Chosen().linkProfile);
    if (!tables_.contains(loaded_)) tables_[loaded_] = InForce(loaded_);
    shown_.clear();
    for (const PreferenceGroup& group : tree_) {
      for (const PreferenceEntry& entry : group.entries) {
        const auto id = static_cast<int32_t>(entry.id);
        if (group.kind == GroupKind::Choice) {
          shown_[id] = Table().at(static_cast<int32_t>(group.id)) == id ? Preference::kOn : Preference::kOff;
        } else {
          shown_[id] = Table().at(id);
        }
      }
    }
    // Of the machine, which has not set it.
    if (OwnPreferences()) shown_[static_cast<int32_t>(PreferenceId::BypassHardwareRendering)] = Preference::kOff;
  }

  void Toggle(int32_t id) {
    if (!OwnPreferences()) return;
    const PreferenceGroup& group = GroupOf(id);
    if (group.kind == GroupKind::Choice) {
      const bool wasOn = shown_[id] == Preference::kOn;
      for (const PreferenceEntry& entry : group.entries) shown_[static_cast<int32_t>(entry.id)] = Preference::kOff;
      if (!wasOn) shown_[id] = Preference::kOn;
      Table()[static_cast<int32_t>(group.id)] = id;
    } else {
      shown_[id] = Table()[id] == Preference::kOn ? Preference::kOff : Preference::kOn;
      Table()[id] = shown_[id];
    }
  }

  Images ExpectedImages() {
    Images images;
    for (const PreferenceGroup& group : tree_) {
      const int off = group.kind == GroupKind::Choice ? 7 : 1;
      for (const PreferenceEntry& entry : group.entries) {
        if (entry.id == PreferenceId::PreventMultiHoming) continue;  // not authorized here
        const auto id = static_cast<int32_t>(entry.id);
        images.emplace_back(id, shown_[id] == Preference::kOn ? off + 1 : off);
      }
    }
    return images;
  }

  // The rows that saving should leave: what was toggled, and all of a profile that has made them its own.
  PreferenceRows ExpectedRows() const {
    PreferenceRows rows = rows_;
    for (const auto& [id, columns] : profiles_) {
      const auto table = tables_.find(id);
      States own = rows.contains(id) ? rows.at(id) : States();
      const States inForce = InForce(id);
      bool isPinned = before_.at(id).defaultPreferences;
      if (table != tables_.end()) {
        for (const auto& [preference, state] : table->second) {
          if (state == inForce.at(preference)) continue;
          own[preference] = state;
          isPinned = true;
        }
      }
      if (isPinned && !columns.defaultPreferences && id <= kLastWithOwnPreferences) {
        own.insert(inForce.begin(), inForce.end());
      }
      if (!own.empty()) rows[id] = own;
    }
    return rows;
  }

  uint32_t chosen = 0;

 private:
  // A profile's own, for the rest those of the profile that it is linked to, and what nobody stores as it is built in.
  States InForce(uint32_t id) const {
    States states;
    for (; id != 0; id = static_cast<uint32_t>(profiles_.at(id).linkProfile)) {
      if (const auto own = rows_.find(id); own != rows_.end()) states.insert(own->second.begin(), own->second.end());
    }
    for (const PreferenceGroup& group : MakePreferenceTree(true)) {
      if (group.kind == GroupKind::Choice) states.try_emplace(static_cast<int32_t>(group.id), 0);
      if (group.kind == GroupKind::Choice) continue;
      for (const PreferenceEntry& entry : group.entries)
        states.try_emplace(static_cast<int32_t>(entry.id), entry.state);
    }
    return states;
  }

  States& Table() { return tables_.at(loaded_); }

  const PreferenceGroup& GroupOf(int32_t id) const {
    for (const PreferenceGroup& group : tree_) {
      for (const PreferenceEntry& entry : group.entries) {
        if (static_cast<int32_t>(entry.id) == id) return group;
      }
    }
    throw std::out_of_range("no such entry");
  }

  const PreferenceTree tree_ = MakePreferenceTree(false);
  std::map<uint32_t, ProfileColumns> profiles_;
  std::map<uint32_t, ProfileColumns> before_;
  PreferenceRows rows_;
  uint32_t loaded_ = 0;    // the profile whose preferences the tree shows
  PreferenceRows tables_;  // of the profiles whose preferences were shown, as the user has them now
  States shown_;
};

class SheetSequence : public testing::Test {
 protected:
  SheetSequence() {
    EXPECT_EQ(OpenSettings(file_), std::nullopt);
    // So that the page can always be left.
    Sql("UPDATE Profiles SET OverrideSignalStrength = 50 WHERE ProfileId > 2000", {});
  }
  ~SheetSequence() override {
    sheet_.reset();
    CloseSettings();
  }

  void Sql(const std::string& statement, const std::function<void(const Row&)>& onRow) const {
    sqlite3* connection = nullptr;
    sqlite3_open(ToUtf8(file_).c_str(), &connection);
    const auto add = [](void* target, int count, char** values, char** names) {
      Row row;
      for (int column = 0; column < count; ++column) {
        row[names[column]] = values[column] != nullptr ? values[column] : "NULL";
      }
      (*static_cast<const std::function<void(const Row&)>*>(target))(row);
      return 0;
    };
    EXPECT_EQ(sqlite3_exec(connection, statement.c_str(), onRow ? +add : nullptr,
                           const_cast<std::function<void(const Row&)>*>(&onRow), nullptr),
              SQLITE_OK);
    sqlite3_close(connection);
  }

  PreferenceRows StoredPreferences() const {
    PreferenceRows rows;
    Sql("SELECT ProfileId, PreferenceId, State FROM Preferences", [&rows](const Row& row) {
      rows[static_cast<uint32_t>(std::stoul(row.at("ProfileId")))][std::stoi(row.at("PreferenceId"))] =
          std::stoi(row.at("State"));
    });
    return rows;
  }

  std::map<uint32_t, Row> StoredProfiles() const {
    std::map<uint32_t, Row> rows;
    Sql("SELECT * FROM Profiles",
        [&rows](const Row& row) { rows[static_cast<uint32_t>(std::stoul(row.at("ProfileId")))] = row; });
    return rows;
  }

  int Below(int count) { return std::uniform_int_distribution(0, count - 1)(random_); }

  // The steps

  void Step() {
    switch (Below(6)) {
      case 0:
        return GoTo(kPreferences);
      case 1:
        return GoTo(kWiFi);
      case 2:
        return Below(3) == 0 ? GoTo(L"General") : ChooseProfile();
      default:
        if (tab_ == kPreferences) return Below(4) == 0 ? ClickOverridePreferences() : ToggleEntry();
        if (tab_ == kWiFi) return Below(4) == 0 ? TypeDetail() : ClickWiFi();
        return ChooseProfile();
    }
  }

  void GoTo(const wchar_t* tab) {
    if (tab_ == tab) return;
    story_ << ToUtf8(tab) << "; ";
    sheet_->SelectTab(tab);
    tab_ = tab;
    if (tab_ == kPreferences) model_->FillTree();
  }

  void ChooseProfile() {
    const auto items = sheet_->Items(IDC_PROFILE_COMBO);
    const std::wstring name = items.at(static_cast<size_t>(Below(static_cast<int>(items.size()))));
    story_ << "profile " << ToUtf8(name) << "; ";
    sheet_->Pick(IDC_PROFILE_COMBO, name);
    model_->chosen = sheet_->SelectedValue(IDC_PROFILE_COMBO).value_or(0);
    ASSERT_EQ(model_->Chosen().name, name);
    if (tab_ == kPreferences) model_->FillTree();
  }

  void ClickOverridePreferences() {
    story_ << "override preferences; ";
    sheet_->Click(IDC_OVERRIDE_CHECK);
    model_->Chosen().defaultPreferences = !model_->Chosen().defaultPreferences;
    model_->FillTree();
  }

  void ToggleEntry() {
    const HWND tree = sheet_->Control(IDC_PREFERENCE_TREE);
    const auto items = Entries(tree);
    const auto [item, id] = items.at(static_cast<size_t>(Below(static_cast<int>(items.size()))));
    story_ << "entry " << id << "; ";
    TreeView_SelectItem(tree, item);
    SendMessageW(tree, WM_CHAR, L' ', 0);
    model_->Toggle(id);
  }

  void ClickWiFi() {
    ProfileColumns& columns = model_->Chosen();
    switch (Below(6)) {
      case 0:
        return ClickBox(IDC_OVERRIDE_CHECK, columns.smUserMayOverrideAutoReconnectDefaults,
                        &ProfileColumns::overrideAutoReconnectDefaults);
      case 1:
        return ClickBox(IDC_RECONNECT_SWITCH_CHECK, model_->OwnWiFi(), &ProfileColumns::overrideARMode);
      case 2:
        return ClickBox(IDC_RECONNECT_HOTSPOT_CHECK, model_->OwnWiFi() && model_->Automatic(),
                        &ProfileColumns::overrideASWiFiMode);
      case 3:
        return ClickBox(IDC_RECONNECT_PROMPT_CHECK, model_->OwnDetails(), &ProfileColumns::overridePromptUserToSwitch);
      case 4:
        story_ << "wait; ";
        sheet_->Click(IDC_RECONNECT_WAIT_RADIO);
        columns.advancedAutoReconnectSettings = 0;
        return;
      default:
        story_ << "at once; ";
        sheet_->Click(IDC_RECONNECT_AT_ONCE_RADIO);
        columns.advancedAutoReconnectSettings = 1;
    }
  }

  void ClickBox(int id, bool enabled, Flag flag) {
    if (!enabled) return;
    story_ << "box " << id << "; ";
    sheet_->Click(id);
    model_->Chosen().*flag = !(model_->Chosen().*flag);
  }

  void TypeDetail() {
    if (!model_->OwnDetails()) return;
    const bool strength = Below(2) == 0;
    const int number = strength ? 10 + Below(81) : Below(10000);
    const int id = strength ? IDC_RECONNECT_STRENGTH : IDC_RECONNECT_INTERVAL;
    story_ << "type " << number << " into " << id << "; ";
    sheet_->Focus(id);
    sheet_->Type(std::to_wstring(number));
    sheet_->TryFocus(IDC_OVERRIDE_CHECK);
    (strength ? model_->Chosen().overrideSignalStrength : model_->Chosen().overrideSwitchInterval) = number;
  }

  // What is seen

  static std::vector<std::pair<HTREEITEM, int32_t>> Entries(HWND tree) {
    std::vector<std::pair<HTREEITEM, int32_t>> entries;
    for (HTREEITEM group = TreeView_GetRoot(tree); group != nullptr; group = TreeView_GetNextSibling(tree, group)) {
      for (HTREEITEM entry = TreeView_GetChild(tree, group); entry != nullptr;
           entry = TreeView_GetNextSibling(tree, entry)) {
        TVITEMW data{};
        data.mask = TVIF_PARAM;
        data.hItem = entry;
        TreeView_GetItem(tree, &data);
        entries.emplace_back(entry, static_cast<int32_t>(data.lParam));
      }
    }
    return entries;
  }

  Images ShownImages() const {
    const HWND tree = sheet_->Control(IDC_PREFERENCE_TREE);
    Images images;
    for (const auto& [entry, id] : Entries(tree)) images.emplace_back(id, TreeItemImage(tree, entry));
    return images;
  }

  void ExpectPage() {
    EXPECT_EQ(sheet_->SelectedValue(IDC_PROFILE_COMBO), model_->chosen);
    if (tab_ == kPreferences) {
      EXPECT_EQ(sheet_->IsChecked(IDC_OVERRIDE_CHECK), model_->OwnPreferences());
      EXPECT_EQ(sheet_->IsEnabled(IDC_PREFERENCE_TREE), model_->OwnPreferences());
      // Entries are toggled by a message that the page posts to itself.
      const Images expected = model_->ExpectedImages();
      if (!WaitUntil([&] { return ShownImages() == expected; }, std::chrono::seconds(5))) {
        EXPECT_EQ(ShownImages(), expected);
      }
    } else if (tab_ == kWiFi) {
      ExpectWiFi();
    }
  }

  void ExpectWiFi() {
    const ProfileColumns& columns = model_->Chosen();
    const bool own = model_->OwnDetails();
    EXPECT_EQ(sheet_->IsChecked(IDC_OVERRIDE_CHECK), model_->OwnWiFi());
    EXPECT_EQ(sheet_->IsChecked(IDC_RECONNECT_SWITCH_CHECK), model_->Automatic());
    EXPECT_EQ(sheet_->IsChecked(IDC_RECONNECT_HOTSPOT_CHECK), model_->Hotspot());
    EXPECT_EQ(sheet_->IsChecked(IDC_RECONNECT_PROMPT_CHECK),
              own ? columns.overridePromptUserToSwitch : columns.smPromptUserToSwitch);
    EXPECT_EQ(sheet_->Text(IDC_RECONNECT_INTERVAL),
              std::to_wstring(own ? columns.overrideSwitchInterval : columns.smSwitchInterval));
    EXPECT_EQ(sheet_->Text(IDC_RECONNECT_STRENGTH),
              std::to_wstring(own ? columns.overrideSignalStrength : columns.smSignalStrength));
    EXPECT_EQ(sheet_->IsChecked(IDC_RECONNECT_AT_ONCE_RADIO), columns.advancedAutoReconnectSettings == 1);
    EXPECT_EQ(sheet_->IsChecked(IDC_RECONNECT_WAIT_RADIO), columns.advancedAutoReconnectSettings != 1);
    EXPECT_EQ(sheet_->IsEnabled(IDC_OVERRIDE_CHECK), columns.smUserMayOverrideAutoReconnectDefaults);
    EXPECT_EQ(sheet_->IsEnabled(IDC_RECONNECT_SWITCH_CHECK), model_->OwnWiFi());
    EXPECT_EQ(sheet_->IsEnabled(IDC_RECONNECT_HOTSPOT_CHECK), model_->OwnWiFi() && model_->Automatic());
    for (const int id : {IDC_RECONNECT_PROMPT_CHECK, IDC_RECONNECT_INTERVAL, IDC_RECONNECT_STRENGTH}) {
      EXPECT_EQ(sheet_->IsEnabled(id), own) << id;
    }
  }

  // Opens the sheet, takes many steps on it and closes it, most often with OK.
  void UseSheet() {
    context_ = {};
    context_.mode = SheetMode::Full;
    ASSERT_EQ(LoadProfiles(context_.profiles), std::nullopt);
    const std::map<uint32_t, Row> profilesBefore = StoredProfiles();
    const PreferenceRows preferencesBefore = StoredPreferences();
    const Model before(context_.profiles, preferencesBefore);
    model_.emplace(context_.profiles, preferencesBefore);
    context_.currentProfile = std::ranges::find_if(context_.profiles, [](const auto& entry) {
                                return entry.first > kLastRoot && !entry.second->GetHidden();
                              })->second;
    model_->chosen = context_.currentProfile->GetProfileId();

    sheet_.emplace(context_);
    tab_ = sheet_->CurrentTab();
    for (int step = 0; step < kStepsOnASheet; ++step) {
      ASSERT_NO_FATAL_FAILURE(Step());
      ExpectPage();
      if (HasFailure()) return;
    }
    const bool confirmed = Below(4) != 0;
    confirmed ? sheet_->PressOk() : sheet_->PressCancel();
    ASSERT_EQ(sheet_->Result() == 1, confirmed);
    sheet_.reset();
    if (!confirmed) {
      EXPECT_EQ(StoredProfiles(), profilesBefore);
      EXPECT_EQ(StoredPreferences(), preferencesBefore);
      return;
    }
    SaveReport report;
    ASSERT_EQ(SaveSettings({context_.profiles, context_.preferences, context_.autoStartItems, context_.manualConfigs,
                            context_.autoConfigs},
                           report),
              std::nullopt);
    EXPECT_EQ(StoredPreferences(), model_->ExpectedRows());
    std::map<uint32_t, Row> expected = profilesBefore;
    for (auto& [id, row] : expected) Apply(before.Profile(id), model_->Profile(id), row);
    EXPECT_EQ(StoredProfiles(), expected);
  }

  // Puts what differs between the two into the row; the rest goes on to be stored or inherited as it is, unless the
  // profile overrides a page of which something differs.
  static void Apply(const ProfileColumns& before, const ProfileColumns& after, Row& row) {
    const auto differs = [&](auto member) { return before.*member != after.*member; };
    const auto set = [&](const char* name, auto member) { row[name] = std::to_string(after.*member); };
    if (differs(&ProfileColumns::defaultPreferences)) set("DefaultPreferences", &ProfileColumns::defaultPreferences);

    const auto onWiFi = [](auto action) {
      action("OverrideAutoReconnectDefaults", &ProfileColumns::overrideAutoReconnectDefaults);
      action("OverrideARMode", &ProfileColumns::overrideARMode);
      action("OverrideASWiFiMode", &ProfileColumns::overrideASWiFiMode);
      action("OverridePromptUserToSwitch", &ProfileColumns::overridePromptUserToSwitch);
      action("OverrideSwitchInterval", &ProfileColumns::overrideSwitchInterval);
      action("OverrideSignalStrength", &ProfileColumns::overrideSignalStrength);
      action("AdvancedAutoReconnectSettings", &ProfileColumns::advancedAutoReconnectSettings);
    };
    bool pins = false;
    onWiFi([&](const char*, auto member) { pins |= differs(member) && after.overrideAutoReconnectDefaults; });
    onWiFi([&](const char* name, auto member) {
      if (differs(member) || (pins && row[name] == "NULL")) set(name, member);
    });
  }

  TemporaryFolder folder_;
  std::wstring file_ = folder_.File(L"Wayline.db");
  LoginPropertiesContext context_;
  std::optional<Model> model_;
  std::optional<SheetDriver> sheet_;
  std::wstring tab_;
  std::mt19937_64 random_;
  std::ostringstream story_;
};

}  // namespace

TEST_F(SheetSequence, ShowsAndSavesWhatWasChosenWhateverTheOrder) {
  const uint64_t seed = Seed();
  std::cout << SheetsToOpen() * kStepsOnASheet << " steps, PAVISE_SEED=" << seed << '\n';
  random_.seed(seed);
  for (int sheet = 0; sheet < SheetsToOpen() && !HasFailure(); ++sheet) {
    story_.str({});
    UseSheet();
  }
  EXPECT_FALSE(HasFailure()) << "PAVISE_SEED=" << seed << ", on the last sheet: " << story_.str();
}
