// Thousands of random steps of a user on the real sheet, and of another program on its database, beside a plain model:
// at any time the pages show the values of the chosen profile and of no other, and in the end the database differs from
// what the other program has stored in what was chosen alone.

#include <windows.h>

#include <gmock/gmock.h>
#include <windowsx.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <map>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "LoginProperties/Preferences/PreferenceControls.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/ProfilePage/ProfileSelector.h"
#include "LoginProperties/Timeouts/TimeoutControls.h"
#include "LoginProperties/WiFiSwitching/AutoReconnectControls.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/Endurance.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TreeItems.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/OtherConnection.h"
#include "tests/ui/SheetDriver.h"
#include "tests/ui/SheetModel.h"
#include "WaylineDll/Host.h"
#include "WaylineDll/Store/RecordRows.h"

namespace {

constexpr int kStepsOnASheet = 100;
constexpr uint32_t kLastRoot = 2000;

// How often OK is tried on a page that refuses it. Then the sheet is cancelled.
constexpr int kAttemptsToEnd = 50;

const std::map<SheetPage, std::wstring> kTabs = {{SheetPage::Preferences, L"Preferences"},
                                                 {SheetPage::Timeouts, L"Timeouts"},
                                                 {SheetPage::WiFi, L"Wi-Fi Switching"},
                                                 {SheetPage::Other, L"General"}};

using Flag = bool ProfileColumns::*;

int StepsToTake() { return FullSize() ? 10000 : 1000; }

uint64_t Seed() {
  const char* const seed = std::getenv("PAVISE_SEED");
  return seed != nullptr ? std::stoull(seed) : std::random_device()();
}

// A column that another program stores now and then, also NULL, and what it may put there.
struct OthersColumn {
  const char* name;
  bool alsoInDefaults;
  std::vector<const char*> values;
};

const std::vector<OthersColumn> kOthersColumns = {
    {"DefaultTimeouts", false, {"0", "1"}},
    {"DurationTime", true, {"0", "120", "1800", "28800", "-600", "1000"}},
    {"ThresholdOnOff", true, {"0", "1"}},
    {"ThresholdBytes", true, {"0", "1000", "60000"}},
    {"ThresholdTimeOut", true, {"0", "60", "600", "-900"}},
    {"WarnTime", true, {"0", "30", "300", "-120", "100"}},
    {"SMIdleTime", true, {"0", "60", "120", "3600"}},
    {"SMSessionTime", true, {"0", "60", "120", "1800", "28800"}},
    {"SMThresholdTime", true, {"0", "1", "10", "30"}},
    {"SMThresholdBytes", true, {"0", "50", "1000"}},
    {"DefaultPreferences", false, {"0", "1"}},
    {"OverrideAutoReconnectDefaults", false, {"0", "1"}},
    {"OverrideARMode", true, {"0", "1"}},
    {"OverrideASWiFiMode", true, {"0", "1"}},
    {"OverridePromptUserToSwitch", true, {"0", "1"}},
    {"OverrideSwitchInterval", true, {"0", "15", "400"}},
    {"OverrideSignalStrength", true, {"0", "40", "9"}},
    {"AdvancedAutoReconnectSettings", true, {"0", "1", "2"}},
    {"SMUserMayOverrideAutoReconnectDefaults", true, {"0", "1", "1"}},
    {"SMAutoReconnectMode", true, {"0", "1"}},
    {"SMAutoSwitchWiFiMode", true, {"0", "1"}},
    {"SMSwitchInterval", true, {"30", "60"}},
    {"SMSignalStrength", true, {"60", "70"}},
    {"UserId", false, {"'one'", "'other'"}},
    {"HelpURL", true, {"'https://one.example.com'", "'https://other.example.com'"}},
};

class SheetSequence : public testing::Test {
 protected:
  SheetSequence() { EXPECT_EQ(OpenSettings(file_), std::nullopt); }
  ~SheetSequence() override {
    if (HasFailure()) std::cout << "On the last sheet: " << story_.str() << '\n';
    sheet_.reset();
    CloseSettings();
  }

  int Below(int count) { return std::uniform_int_distribution(0, count - 1)(random_); }
  bool OneIn(int count) { return Below(count) == 0; }

  template <typename Values>
  const auto& OneOf(const Values& values) {
    return *std::next(values.begin(), Below(static_cast<int>(values.size())));
  }

  // The steps of the user

  void Step() {
    ++steps_;
    switch (Below(12)) {
      case 0:
        return StepOfAnother();
      case 1:
      case 2:
      case 3:
        return GoTo(OneOf(kTabs).first);
      case 4:
        return ChooseProfile();
      default:
        return StepOnThePage();
    }
  }

  void StepOnThePage() {
    switch (model_->Page()) {
      case SheetPage::Preferences:
        return OneIn(4) ? ClickOverridePreferences() : ToggleEntry();
      case SheetPage::Timeouts:
        return StepOnTimeouts();
      case SheetPage::WiFi:
        return model_->OwnDetails() && OneIn(2) ? TypeDetail() : ClickWiFi();
      case SheetPage::Other:
        return ChooseProfile();
    }
  }

  void GoTo(SheetPage page) {
    const std::wstring& tab = kTabs.at(page);
    if (model_->Page() == page) return;
    const bool byMouse = OneIn(15);
    story_ << ToUtf8(tab) << (byMouse ? " by mouse; " : "; ");
    const auto refusal = model_->LeavePage();
    byMouse ? sheet_->SelectTabByMouse(tab) : sheet_->SelectTab(tab);
    if (refusal) return Refused(*refusal);
    EXPECT_EQ(sheet_->CurrentTab(), tab);
    model_->Show(page, stored_);
  }

  void ChooseProfile() {
    const auto profiles = SelectableProfiles(context_.profiles);
    const SelectableProfile& profile = OneOf(profiles);
    story_ << "profile " << profile.id << "; ";
    const auto refusal = model_->LeaveProfile();
    sheet_->Pick(IDC_PROFILE_COMBO, profile.name);
    if (refusal) return Refused(*refusal);
    model_->Choose(profile.id, stored_);
  }

  // The page stays in front, and says why.
  void Refused(const std::wstring& sentence) {
    story_ << "refused; ";
    ASSERT_EQ(sheet_->MessageBoxText(), sentence);
    sheet_->AnswerMessageBox(IDOK);
    ASSERT_TRUE(sheet_->IsOpen());
    EXPECT_EQ(sheet_->CurrentTab(), kTabs.at(model_->Page()));
    if (model_->Page() != SheetPage::WiFi || !model_->OwnDetails()) return;
    EXPECT_TRUE(sheet_->HasFocus(IDC_RECONNECT_STRENGTH));
    OneIn(2) ? TypeWrongStrength() : TypeStrength();
  }

  void ClickOverridePreferences() {
    story_ << "override preferences; ";
    sheet_->Click(IDC_OVERRIDE_CHECK);
    model_->ClickOverridePreferences(stored_);
  }

  void ToggleEntry() {
    const HWND tree = sheet_->Control(IDC_PREFERENCE_TREE);
    const auto [item, id] = OneOf(Entries(tree));
    story_ << "entry " << id << "; ";
    TreeView_SelectItem(tree, item);
    SendMessageW(tree, WM_CHAR, L' ', 0);
    model_->Toggle(id);
  }

  void StepOnTimeouts() {
    TimeoutsModel& page = model_->Timeouts();
    if (!page.overrides || OneIn(6)) {
      story_ << "override time-outs; ";
      sheet_->Click(IDC_OVERRIDE_CHECK);
      return model_->ClickOverrideTimeouts();
    }
    switch (Below(7)) {
      case 0:
        return ClickRule(IDC_TIMEOUT_DURATION_CHECK, page.durationOn);
      case 1:
        return ClickRule(IDC_TIMEOUT_WARNING_CHECK, page.warningOn);
      case 2:
        story_ << "threshold; ";
        sheet_->Click(IDC_TIMEOUT_THRESHOLD_CHECK);
        return model_->ClickThreshold();
      case 3:
        return PickValue(IDC_TIMEOUT_DURATION, page.durationOn, page.duration);
      case 4:
        return PickValue(IDC_TIMEOUT_BYTES, page.thresholdOn, page.bytes);
      case 5:
        return PickValue(IDC_TIMEOUT_PERIOD, page.thresholdOn, page.period);
      default:
        return PickValue(IDC_TIMEOUT_WARNING, page.warningOn, page.warning);
    }
  }

  void ClickRule(int id, bool& on) {
    story_ << "rule " << id << "; ";
    sheet_->Click(id);
    on = !on;
  }

  void PickValue(int id, bool enabled, OfferedValues& list) {
    if (!enabled || list.values.empty()) return;
    const auto index = static_cast<size_t>(Below(static_cast<int>(list.values.size())));
    list.chosen = list.values[index];
    story_ << *list.chosen << " of " << id << "; ";
    sheet_->Pick(id, sheet_->Items(id).at(index));
  }

  void ClickWiFi() {
    ProfileColumns& columns = model_->Chosen();
    switch (!model_->OwnDetails() && OneIn(2) ? BoxBeforeTheFields() : Below(6)) {
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

  // The one of the first three that must be ticked next, so that something can be typed.
  int BoxBeforeTheFields() {
    if (!model_->OwnWiFi()) return 0;
    return model_->Automatic() ? 2 : 1;
  }

  void ClickBox(int id, bool enabled, Flag flag) {
    if (!enabled) return;
    story_ << "box " << id << "; ";
    sheet_->Click(id);
    model_->Chosen().*flag = !(model_->Chosen().*flag);
  }

  void TypeDetail() {
    if (OneIn(3)) return TypeWrongStrength();
    OneIn(2) ? TypeStrength() : TypeInterval();
  }

  void TypeInterval() {
    const int interval = Below(10000);
    Type(IDC_RECONNECT_INTERVAL, std::to_wstring(interval));
    model_->Chosen().overrideSwitchInterval = interval;
    LeaveField();
  }

  void TypeStrength() {
    const int strength = 10 + Below(81);
    Type(IDC_RECONNECT_STRENGTH, std::to_wstring(strength));
    model_->Chosen().overrideSignalStrength = strength;
    LeaveField();
  }

  void Type(int id, const std::wstring& text) {
    story_ << "type '" << ToUtf8(text) << "' into " << id << "; ";
    sheet_->Focus(id);
    sheet_->Type(text);
  }

  void LeaveField() {
    const auto refusal = model_->LeaveField();
    sheet_->TryFocus(IDC_OVERRIDE_CHECK);
    if (refusal) Refused(*refusal);
  }

  // Only Cancel gets the user away from it.
  void TypeWrongStrength() {
    const std::map<std::wstring, int> wrong = {{L"9", 9}, {L"91", 91}, {L"\b", 0}, {L"0", 0}};
    const auto& [text, strength] = OneOf(wrong);
    Type(IDC_RECONNECT_STRENGTH, text);
    if (OneIn(12)) return Cancel();
    model_->Chosen().overrideSignalStrength = strength;
    switch (Below(4)) {
      case 0:
        LeaveField();
        // It is not always checked at once; before the next step it must be one that can stand.
        if (!result_ && !model_->StrengthCanStand()) TypeStrength();
        return;
      case 1:
        return GoTo(OneIn(2) ? SheetPage::Other : SheetPage::Timeouts);
      case 2:
        return ChooseProfile();
      default:
        TryOk();
    }
  }

  void TryOk() {
    const bool byMouse = OneIn(2);
    story_ << (byMouse ? "OK by mouse; " : "OK; ");
    const auto refusal = model_->LeavePage();
    byMouse ? sheet_->PressOkByMouse() : sheet_->PressOk();
    if (refusal) return Refused(*refusal);
    result_ = sheet_->Result();
    EXPECT_EQ(result_, kSheetConfirmed);
  }

  void Cancel() {
    const bool byMouse = OneIn(2);
    story_ << (byMouse ? "Cancel by mouse; " : "Cancel; ");
    byMouse ? sheet_->PressCancelByMouse() : sheet_->PressCancel();
    ASSERT_EQ(sheet_->MessageBoxText(), std::nullopt);
    result_ = sheet_->Result();
    EXPECT_EQ(result_, kSheetCancelled);
  }

  // Where there are fields to type into, while a strength stands there that is refused everywhere else.
  void CancelOnFields() {
    TakeStep([this] { GoTo(SheetPage::WiFi); });
    if (HasFailure() || result_) return;
    if (model_->Page() == SheetPage::WiFi && model_->OwnDetails()) Type(IDC_RECONNECT_STRENGTH, L"9");
    Cancel();
  }

  // The steps of the other program

  void StepOfAnother() {
    switch (Below(10)) {
      case 0:
        RemoveProfile();
        break;
      case 1:
        AddProfile();
        break;
      case 2:
      case 3:
      case 4:
        StorePreference();
        break;
      default:
        StoreColumn();
    }
    stored_ = ReadSettings(file_);
  }

  void Other(const std::string& sql) {
    story_ << "[" << sql << "]; ";
    RunSql(file_, sql);
  }

  void RemoveProfile() {
    std::vector<uint32_t> removable;
    for (const auto& [id, row] : stored_.profiles) {
      if (id > kLastRoot && row.at("Hidden") != "1") removable.push_back(id);
    }
    if (removable.size() > 3) Other("DELETE FROM Profiles WHERE ProfileId = " + std::to_string(OneOf(removable)));
  }

  void AddProfile() {
    if (stored_.profiles.size() > 12) return;
    const std::string id = std::to_string(++lastAdded_);
    const std::vector<std::string> roots = {"1", "100", "2000"};
    Other("INSERT INTO Profiles (ProfileId, Name, LinkProfile, DefaultTimeouts) VALUES (" + id + ", 'Added " + id +
          "', " + OneOf(roots) + ", " + std::to_string(Below(2)) + ")");
  }

  void StoreColumn() {
    const OthersColumn& column = OneOf(kOthersColumns);
    const uint32_t id = OneOf(stored_.profiles).first;
    if (id <= kLastRoot && !column.alsoInDefaults) return;
    Other("UPDATE Profiles SET " + std::string(column.name) + " = " + (OneIn(4) ? "NULL" : OneOf(column.values)) +
          " WHERE ProfileId = " + std::to_string(id));
  }

  void StorePreference() {
    static const PreferenceTree tree = MakePreferenceTree(false);
    const PreferenceGroup& group = OneOf(tree);
    const auto entry = static_cast<int32_t>(OneOf(group.entries).id);
    const bool isChoice = group.kind == GroupKind::Choice;
    const std::string profile = std::to_string(OneOf(stored_.profiles).first);
    const std::string id = std::to_string(isChoice ? static_cast<int32_t>(group.id) : entry);
    if (OneIn(3)) return Other("DELETE FROM Preferences WHERE ProfileId = " + profile + " AND PreferenceId = " + id);
    const std::string state = std::to_string(isChoice ? entry : 1 + Below(2));
    Other("INSERT OR REPLACE INTO Preferences (ProfileId, PreferenceId, State, Visible, IPSecRequired) VALUES (" +
          profile + ", " + id + ", " + state + ", 1, 0)");
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
    ASSERT_EQ(sheet_->MessageBoxText(), std::nullopt);
    EXPECT_EQ(sheet_->SelectedValue(IDC_PROFILE_COMBO), model_->ChosenId());
    switch (model_->Page()) {
      case SheetPage::Preferences:
        return ExpectPreferences();
      case SheetPage::Timeouts:
        return ExpectTimeouts();
      case SheetPage::WiFi:
        return ExpectWiFi();
      case SheetPage::Other:
        break;
    }
  }

  void ExpectPreferences() {
    EXPECT_EQ(sheet_->IsChecked(IDC_OVERRIDE_CHECK), model_->OwnPreferences());
    EXPECT_EQ(sheet_->IsEnabled(IDC_PREFERENCE_TREE), model_->OwnPreferences());
    // Entries are toggled by a message that the page posts to itself.
    const Images expected = model_->ExpectedImages();
    if (!WaitUntil([&] { return ShownImages() == expected; }, std::chrono::seconds(5))) {
      EXPECT_EQ(ShownImages(), expected);
    }
  }

  void ExpectTimeouts() {
    const TimeoutsModel& page = model_->Timeouts();
    EXPECT_EQ(sheet_->IsChecked(IDC_OVERRIDE_CHECK), page.overrides);
    ExpectRule(IDC_TIMEOUT_DURATION_CHECK, page.durationOn, {{IDC_TIMEOUT_DURATION, &page.duration}});
    ExpectRule(IDC_TIMEOUT_THRESHOLD_CHECK, page.thresholdOn,
               {{IDC_TIMEOUT_BYTES, &page.bytes}, {IDC_TIMEOUT_PERIOD, &page.period}});
    ExpectRule(IDC_TIMEOUT_WARNING_CHECK, page.warningOn, {{IDC_TIMEOUT_WARNING, &page.warning}});
  }

  void ExpectRule(int check, bool on, const std::map<int, const OfferedValues*>& lists) {
    const bool overrides = model_->Timeouts().overrides;
    EXPECT_EQ(sheet_->IsChecked(check), on) << check;
    EXPECT_EQ(sheet_->IsEnabled(check), overrides) << check;
    for (const auto& [id, list] : lists) {
      EXPECT_EQ(sheet_->IsEnabled(id), overrides && on) << id;
      EXPECT_EQ(static_cast<size_t>(ComboBox_GetCount(sheet_->Control(id))), list->values.size()) << id;
      EXPECT_EQ(sheet_->SelectedValue(id), list->chosen) << id;
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

  // No profile has taken over what belongs to another one.
  void ExpectRecords() {
    for (const auto& [id, profile] : context_.profiles) {
      EXPECT_EQ(ColumnNames(DifferingColumns(*profile, model_->Profiles().at(id)).columns), L"") << id;
    }
  }

  // Opens the sheet, takes many steps on it and closes it, most often with OK.
  void UseSheet() {
    stored_ = ReadSettings(file_);
    context_ = {};
    context_.mode = SheetMode::Full;
    ASSERT_EQ(LoadProfiles(context_.profiles), std::nullopt);
    model_.emplace(context_.profiles);
    const uint32_t first = SelectableProfiles(context_.profiles).front().id;
    context_.currentProfile = context_.profiles.at(first);
    model_->Choose(first, stored_);

    sheet_.emplace(context_);
    result_.reset();
    sheet_->SelectTab(kTabs.at(SheetPage::Other));
    for (int step = 0; step < kStepsOnASheet && !result_; ++step) TakeStep([this] { Step(); });
    const bool confirms = !OneIn(4);
    for (int attempt = 0; attempt < kAttemptsToEnd && confirms && !result_; ++attempt) {
      TakeStep([this] { TryOk(); });
      if (!result_) TakeStep([this] { StepOnThePage(); });
    }
    if (HasFailure()) return;
    if (!result_) CancelOnFields();
    if (HasFatalFailure()) return;
    sheet_.reset();
    *result_ == kSheetConfirmed ? ExpectSaved() : ExpectDiscarded();
  }

  template <typename Action>
  void TakeStep(Action action) {
    if (HasFailure()) return;
    action();
    if (HasFatalFailure() || result_) return;
    ExpectPage();
    ExpectRecords();
  }

  void ExpectSaved() const {
    const SheetModel::Outcome expected = model_->Saved(stored_);
    SaveReport report;
    ASSERT_EQ(SaveSettings({context_.profiles, context_.preferences, context_.autoStartItems, context_.manualConfigs,
                            context_.autoConfigs},
                           report),
              std::nullopt);
    EXPECT_THAT(report.lost, testing::UnorderedElementsAreArray(expected.lost));
    ExpectStored(expected.stored);
  }

  void ExpectDiscarded() const {
    DiscardChanges();
    ExpectStored(stored_);
  }

  void ExpectStored(const StoredSettings& expected) const {
    const StoredSettings found = ReadSettings(file_);
    EXPECT_EQ(found.preferences, expected.preferences);
    ASSERT_EQ(found.profiles.size(), expected.profiles.size());
    for (const auto& [id, row] : expected.profiles) {
      for (const auto& [column, value] : row) {
        EXPECT_EQ(found.profiles.at(id).at(column), value) << column << " of " << id;
      }
    }
  }

  TemporaryFolder folder_;
  std::wstring file_ = folder_.File(L"Wayline.db");
  StoredSettings stored_;  // what others see
  uint32_t lastAdded_ = 3000;
  LoginPropertiesContext context_;
  std::optional<SheetModel> model_;
  std::optional<SheetDriver> sheet_;
  std::optional<INT_PTR> result_;  // once the sheet has ended
  int steps_ = 0;
  std::mt19937_64 random_;
  std::ostringstream story_;
};

}  // namespace

TEST_F(SheetSequence, ShowsAndSavesWhatWasChosenWhateverTheOrder) {
  const uint64_t seed = Seed();
  std::cout << StepsToTake() << " steps, PAVISE_SEED=" << seed << '\n';
  random_.seed(seed);
  while (steps_ < StepsToTake() && !HasFailure()) {
    story_.str({});
    UseSheet();
  }
}
