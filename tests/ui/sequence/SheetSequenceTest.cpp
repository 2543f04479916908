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
#include <set>
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
#include "tests/ui/sequence/GeneralSteps.h"
#include "tests/ui/sequence/OtherProgram.h"
#include "tests/ui/sequence/SheetScene.h"
#include "tests/ui/StoredSheetTest.h"
#include "WaylineDll/Host.h"
#include "WaylineDll/Store/RecordRows.h"

namespace {

constexpr int kStepsOnASheet = 100;

// How often OK is tried on a page that refuses it. Then the sheet is cancelled.
constexpr int kAttemptsToEnd = 50;

const std::map<SheetPage, std::wstring> kTabs = {{SheetPage::Preferences, L"Preferences"},
                                                 {SheetPage::Timeouts, L"Timeouts"},
                                                 {SheetPage::WiFi, L"Wi-Fi Switching"},
                                                 {SheetPage::General, L"General"}};

using Flag = bool ProfileColumns::*;

int StepsToTake() { return FullSize() ? 10000 : 1000; }

uint64_t Seed() {
  const char* const seed = std::getenv("PAVISE_SEED");
  return seed != nullptr ? std::stoull(seed) : std::random_device()();
}

class SheetSequence : public testing::Test, protected SheetScene {
 protected:
  SheetSequence() {
    file = folder_.File(L"Wayline.db");
    EXPECT_EQ(OpenSettings(file), std::nullopt);
  }
  ~SheetSequence() override {
    if (HasFailure()) std::cout << "On the last sheet: " << story.str() << '\n';
    sheet.reset();
    CloseSettings();
  }

  int Below(int count) { return chance.Below(count); }
  bool OneIn(int count) { return chance.OneIn(count); }

  template <typename Values>
  const auto& OneOf(const Values& values) {
    return chance.OneOf(values);
  }

  // The steps of the user

  void Step() {
    ++steps_;
    switch (Below(12)) {
      case 0:
        return other_.TakeStep();
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
    switch (model->Page()) {
      case SheetPage::Preferences:
        return OneIn(4) ? ClickOverridePreferences() : ToggleEntry();
      case SheetPage::Timeouts:
        return StepOnTimeouts();
      case SheetPage::WiFi:
        return model->OwnDetails() && OneIn(2) ? TypeDetail() : ClickWiFi();
      case SheetPage::General:
        return StepOnGeneral();
    }
  }

  void StepOnGeneral() {
    // Wizards take as long as dozens of other steps.
    switch (Below(12)) {
      case 0:
      case 1:
        return general_.Rename();
      case 2:
        return general_.Remove();
      case 3:
        return general_.ConfigureNetwork();
      case 4:
        return general_.ConfigureServers();
      case 5:
        return general_.AddNew();
      default:
        return ChooseProfile();
    }
  }

  void GoTo(SheetPage page) {
    const std::wstring& tab = kTabs.at(page);
    if (model->Page() == page) return;
    const bool byMouse = OneIn(15);
    story << ToUtf8(tab) << (byMouse ? " by mouse; " : "; ");
    const auto refusal = model->LeavePage();
    byMouse ? sheet->SelectTabByMouse(tab) : sheet->SelectTab(tab);
    if (refusal) return Refused(*refusal);
    EXPECT_EQ(sheet->CurrentTab(), tab);
    model->Show(page, stored);
  }

  void ChooseProfile() {
    const uint32_t profile = OneOf(model->Profiles().Selectable()).first;
    story << "profile " << profile << "; ";
    const auto refusal = model->LeaveProfile();
    sheet->PickValue(IDC_PROFILE_COMBO, profile);
    if (refusal) return Refused(*refusal);
    model->Choose(profile, stored);
  }

  // The page stays in front, and says why.
  void Refused(const std::wstring& sentence) {
    story << "refused; ";
    ASSERT_EQ(sheet->MessageBoxText(), sentence);
    sheet->AnswerMessageBox(IDOK);
    ASSERT_TRUE(sheet->IsOpen());
    EXPECT_EQ(sheet->CurrentTab(), kTabs.at(model->Page()));
    if (model->Page() != SheetPage::WiFi || !model->OwnDetails()) return;
    EXPECT_TRUE(sheet->HasFocus(IDC_RECONNECT_STRENGTH));
    OneIn(2) ? TypeWrongStrength() : TypeStrength();
  }

  void ClickOverridePreferences() {
    story << "override preferences; ";
    sheet->Click(IDC_OVERRIDE_CHECK);
    model->ClickOverridePreferences(stored);
  }

  void ToggleEntry() {
    const HWND tree = sheet->Control(IDC_PREFERENCE_TREE);
    const auto [item, id] = OneOf(Entries(tree));
    story << "entry " << id << "; ";
    TreeView_SelectItem(tree, item);
    SendMessageW(tree, WM_CHAR, L' ', 0);
    model->Toggle(id);
  }

  void StepOnTimeouts() {
    TimeoutsModel& page = model->Timeouts();
    if (!page.overrides || OneIn(6)) {
      story << "override time-outs; ";
      sheet->Click(IDC_OVERRIDE_CHECK);
      return model->ClickOverrideTimeouts();
    }
    switch (Below(7)) {
      case 0:
        return ClickRule(IDC_TIMEOUT_DURATION_CHECK, page.durationOn);
      case 1:
        return ClickRule(IDC_TIMEOUT_WARNING_CHECK, page.warningOn);
      case 2:
        story << "threshold; ";
        sheet->Click(IDC_TIMEOUT_THRESHOLD_CHECK);
        return model->ClickThreshold();
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
    story << "rule " << id << "; ";
    sheet->Click(id);
    on = !on;
  }

  void PickValue(int id, bool enabled, OfferedValues& list) {
    if (!enabled || list.values.empty()) return;
    const auto index = static_cast<size_t>(Below(static_cast<int>(list.values.size())));
    list.chosen = list.values[index];
    story << *list.chosen << " of " << id << "; ";
    sheet->Pick(id, sheet->Items(id).at(index));
  }

  void ClickWiFi() {
    ProfileColumns& columns = model->Chosen();
    switch (!model->OwnDetails() && OneIn(2) ? BoxBeforeTheFields() : Below(6)) {
      case 0:
        return ClickBox(IDC_OVERRIDE_CHECK, columns.smUserMayOverrideAutoReconnectDefaults,
                        &ProfileColumns::overrideAutoReconnectDefaults);
      case 1:
        return ClickBox(IDC_RECONNECT_SWITCH_CHECK, model->OwnWiFi(), &ProfileColumns::overrideARMode);
      case 2:
        return ClickBox(IDC_RECONNECT_HOTSPOT_CHECK, model->OwnWiFi() && WiFiModel::Automatic(model->Chosen()),
                        &ProfileColumns::overrideASWiFiMode);
      case 3:
        return ClickBox(IDC_RECONNECT_PROMPT_CHECK, model->OwnDetails(), &ProfileColumns::overridePromptUserToSwitch);
      case 4:
        story << "wait; ";
        sheet->Click(IDC_RECONNECT_WAIT_RADIO);
        columns.advancedAutoReconnectSettings = 0;
        return;
      default:
        story << "at once; ";
        sheet->Click(IDC_RECONNECT_AT_ONCE_RADIO);
        columns.advancedAutoReconnectSettings = 1;
    }
  }

  // The one of the first three that must be ticked next, so that something can be typed.
  int BoxBeforeTheFields() {
    if (!model->OwnWiFi()) return 0;
    return WiFiModel::Automatic(model->Chosen()) ? 2 : 1;
  }

  void ClickBox(int id, bool enabled, Flag flag) {
    if (!enabled) return;
    story << "box " << id << "; ";
    sheet->Click(id);
    model->Chosen().*flag = !(model->Chosen().*flag);
  }

  void TypeDetail() {
    if (OneIn(3)) return TypeWrongStrength();
    OneIn(2) ? TypeStrength() : TypeInterval();
  }

  void TypeInterval() {
    const int interval = Below(10000);
    Type(IDC_RECONNECT_INTERVAL, std::to_wstring(interval));
    model->Chosen().overrideSwitchInterval = interval;
    LeaveField();
  }

  void TypeStrength() {
    const int strength = 10 + Below(81);
    Type(IDC_RECONNECT_STRENGTH, std::to_wstring(strength));
    model->Chosen().overrideSignalStrength = strength;
    LeaveField();
  }

  void Type(int id, const std::wstring& text) {
    story << "type '" << ToUtf8(text) << "' into " << id << "; ";
    sheet->Focus(id);
    sheet->Type(text);
  }

  void LeaveField() {
    const auto refusal = model->WiFi().LeaveField(model->Chosen());
    sheet->TryFocus(IDC_OVERRIDE_CHECK);
    if (refusal) Refused(*refusal);
  }

  // Only Cancel gets the user away from it.
  void TypeWrongStrength() {
    const std::map<std::wstring, int> wrong = {{L"9", 9}, {L"91", 91}, {L"\b", 0}, {L"0", 0}};
    const auto& [text, strength] = OneOf(wrong);
    Type(IDC_RECONNECT_STRENGTH, text);
    if (OneIn(12)) return Cancel();
    model->Chosen().overrideSignalStrength = strength;
    switch (Below(4)) {
      case 0:
        LeaveField();
        // It is not always checked at once; before the next step it must be one that can stand.
        if (!result_ && !WiFiModel::StrengthCanStand(model->Chosen())) TypeStrength();
        return;
      case 1:
        return GoTo(OneIn(2) ? SheetPage::General : SheetPage::Timeouts);
      case 2:
        return ChooseProfile();
      default:
        TryOk();
    }
  }

  void TryOk() {
    const bool byMouse = OneIn(2);
    story << (byMouse ? "OK by mouse; " : "OK; ");
    const auto refusal = model->LeavePage();
    byMouse ? sheet->PressOkByMouse() : sheet->PressOk();
    if (refusal) return Refused(*refusal);
    result_ = sheet->Result();
    EXPECT_EQ(result_, kSheetConfirmed);
  }

  void Cancel() {
    const bool byMouse = OneIn(2);
    story << (byMouse ? "Cancel by mouse; " : "Cancel; ");
    byMouse ? sheet->PressCancelByMouse() : sheet->PressCancel();
    ASSERT_EQ(sheet->MessageBoxText(), std::nullopt);
    result_ = sheet->Result();
    EXPECT_EQ(result_, kSheetCancelled);
  }

  // Where there are fields to type into, while a strength stands there that is refused everywhere else.
  void CancelOnFields() {
    TakeStep([this] { GoTo(SheetPage::WiFi); });
    if (HasFailure() || result_) return;
    if (model->Page() == SheetPage::WiFi && model->OwnDetails()) Type(IDC_RECONNECT_STRENGTH, L"9");
    Cancel();
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
    const HWND tree = sheet->Control(IDC_PREFERENCE_TREE);
    Images images;
    for (const auto& [entry, id] : Entries(tree)) images.emplace_back(id, TreeItemImage(tree, entry));
    return images;
  }

  void ExpectPage() {
    ASSERT_EQ(sheet->MessageBoxText(), std::nullopt);
    EXPECT_EQ(sheet->SelectedValue(IDC_PROFILE_COMBO), model->ChosenId());
    EXPECT_EQ(ListedProfiles(), model->Profiles().Selectable());
    switch (model->Page()) {
      case SheetPage::Preferences:
        return ExpectPreferences();
      case SheetPage::Timeouts:
        return ExpectTimeouts();
      case SheetPage::WiFi:
        return ExpectWiFi();
      case SheetPage::General:
        return general_.ExpectPage();
    }
  }

  std::map<uint32_t, std::wstring> ListedProfiles() const {
    const std::vector<uint32_t> ids = sheet->Values(IDC_PROFILE_COMBO);
    const std::vector<std::wstring> names = sheet->Items(IDC_PROFILE_COMBO);
    std::map<uint32_t, std::wstring> listed;
    for (size_t index = 0; index < ids.size(); ++index) listed[ids[index]] = names.at(index);
    return listed;
  }

  void ExpectPreferences() {
    EXPECT_EQ(sheet->IsChecked(IDC_OVERRIDE_CHECK), model->OwnPreferences());
    EXPECT_EQ(sheet->IsEnabled(IDC_PREFERENCE_TREE), model->OwnPreferences());
    // Entries are toggled by a message that the page posts to itself.
    const Images expected = model->Preferences().ExpectedImages();
    if (!WaitUntil([&] { return ShownImages() == expected; }, std::chrono::seconds(5))) {
      EXPECT_EQ(ShownImages(), expected);
    }
  }

  void ExpectTimeouts() {
    const TimeoutsModel& page = model->Timeouts();
    EXPECT_EQ(sheet->IsChecked(IDC_OVERRIDE_CHECK), page.boxTicked);
    ExpectRule(IDC_TIMEOUT_DURATION_CHECK, page.durationOn, {{IDC_TIMEOUT_DURATION, &page.duration}});
    ExpectRule(IDC_TIMEOUT_THRESHOLD_CHECK, page.thresholdOn,
               {{IDC_TIMEOUT_BYTES, &page.bytes}, {IDC_TIMEOUT_PERIOD, &page.period}});
    ExpectRule(IDC_TIMEOUT_WARNING_CHECK, page.warningOn, {{IDC_TIMEOUT_WARNING, &page.warning}});
  }

  void ExpectRule(int check, bool on, const std::map<int, const OfferedValues*>& lists) {
    const bool overrides = model->Timeouts().overrides;
    EXPECT_EQ(sheet->IsChecked(check), on) << check;
    EXPECT_EQ(sheet->IsEnabled(check), overrides) << check;
    for (const auto& [id, list] : lists) {
      EXPECT_EQ(sheet->IsEnabled(id), overrides && on) << id;
      EXPECT_EQ(static_cast<size_t>(ComboBox_GetCount(sheet->Control(id))), list->values.size()) << id;
      EXPECT_EQ(sheet->SelectedValue(id), list->chosen) << id;
    }
  }

  void ExpectWiFi() {
    const ProfileColumns& columns = model->Chosen();
    const bool own = model->OwnDetails();
    EXPECT_EQ(sheet->IsChecked(IDC_OVERRIDE_CHECK), model->OwnWiFi());
    EXPECT_EQ(sheet->IsChecked(IDC_RECONNECT_SWITCH_CHECK), WiFiModel::Automatic(model->Chosen()));
    EXPECT_EQ(sheet->IsChecked(IDC_RECONNECT_HOTSPOT_CHECK), WiFiModel::Hotspot(model->Chosen()));
    EXPECT_EQ(sheet->IsChecked(IDC_RECONNECT_PROMPT_CHECK),
              own ? columns.overridePromptUserToSwitch : columns.smPromptUserToSwitch);
    EXPECT_EQ(sheet->Text(IDC_RECONNECT_INTERVAL),
              std::to_wstring(own ? columns.overrideSwitchInterval : columns.smSwitchInterval));
    EXPECT_EQ(sheet->Text(IDC_RECONNECT_STRENGTH),
              std::to_wstring(own ? columns.overrideSignalStrength : columns.smSignalStrength));
    EXPECT_EQ(sheet->IsChecked(IDC_RECONNECT_AT_ONCE_RADIO), columns.advancedAutoReconnectSettings == 1);
    EXPECT_EQ(sheet->IsChecked(IDC_RECONNECT_WAIT_RADIO), columns.advancedAutoReconnectSettings != 1);
    EXPECT_EQ(sheet->IsEnabled(IDC_OVERRIDE_CHECK), columns.smUserMayOverrideAutoReconnectDefaults);
    EXPECT_EQ(sheet->IsEnabled(IDC_RECONNECT_SWITCH_CHECK), model->OwnWiFi());
    EXPECT_EQ(sheet->IsEnabled(IDC_RECONNECT_HOTSPOT_CHECK), model->OwnWiFi() && WiFiModel::Automatic(model->Chosen()));
    for (const int id : {IDC_RECONNECT_PROMPT_CHECK, IDC_RECONNECT_INTERVAL, IDC_RECONNECT_STRENGTH}) {
      EXPECT_EQ(sheet->IsEnabled(id), own) << id;
    }
  }

  // No profile has taken over what belongs to another one.
  void ExpectRecords() const {
    for (const auto& [id, profile] : context_.profiles) {
      EXPECT_EQ(ColumnNames(DifferingColumns(*profile, model->Profiles().All().at(id)).columns), L"") << id;
    }
  }

  // The profiles, of which the user can select one at least.
  void Load() {
    context_ = {};
    context_.mode = SheetMode::Full;
    ASSERT_EQ(LoadProfiles(context_.profiles), std::nullopt);
    if (FirstSelectableProfile(context_.profiles) != nullptr) return;
    other_.ShowAllProfiles();
    ASSERT_EQ(LoadProfiles(context_.profiles), std::nullopt);
  }

  // Opens the sheet, takes many steps on it and closes it, most often with OK.
  void UseSheet() {
    stored = ReadSettings(file);
    ASSERT_NO_FATAL_FAILURE(Load());
    const auto first = FirstSelectableProfile(context_.profiles);
    context_.currentProfile = first;
    model.emplace(context_.profiles, first->GetProfileId(), stored);

    sheet.emplace(context_);
    result_.reset();
    sheet->SelectTab(kTabs.at(SheetPage::General));
    for (int step = 0; step < kStepsOnASheet && !result_; ++step) TakeStep([this] { Step(); });
    const bool confirms = !OneIn(4);
    for (int attempt = 0; attempt < kAttemptsToEnd && confirms && !result_; ++attempt) {
      TakeStep([this] { TryOk(); });
      if (!result_) TakeStep([this] { StepOnThePage(); });
    }
    if (HasFailure()) return;
    if (!result_) CancelOnFields();
    if (HasFatalFailure()) return;
    sheet.reset();
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
    ExpectRecords();
    EXPECT_EQ(context_.profiles.size(), model->Profiles().All().size());
    const SheetModel::Outcome expected = model->Saved(stored);
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
    ExpectStored(stored);
  }

  void ExpectStored(const StoredSettings& expected) const {
    const std::multiset<std::string> found = AllRows(file);
    EXPECT_THAT(Without(RowsOf(expected), found), testing::IsEmpty()) << "are missing";
    EXPECT_THAT(Without(found, RowsOf(expected)), testing::IsEmpty()) << "should not be there";
  }

  TemporaryFolder folder_;
  LoginPropertiesContext context_;
  OtherProgram other_{*this};
  GeneralSteps general_{*this, other_};
  std::optional<INT_PTR> result_;  // once the sheet has ended
  int steps_ = 0;
};

}  // namespace

TEST_F(SheetSequence, ShowsAndSavesWhatWasChosenWhateverTheOrder) {
  const uint64_t seed = Seed();
  std::cout << StepsToTake() << " steps, PAVISE_SEED=" << seed << '\n';
  chance.Begin(seed);
  while (steps_ < StepsToTake() && !HasFailure()) {
    story.str({});
    UseSheet();
  }
}
