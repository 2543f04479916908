// Random steps of a user on the "Autostart" page of the real sheet, beside a plain model: at any time the page shows
// what the model says, and in the end the database differs from what it was in what was confirmed alone.

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/ProfilePage/ProfileSelector.h"
#include "LoginProperties/SheetResult.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/LoginProperties/Autostart/AutostartModel.h"
#include "tests/support/Endurance.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/ui/AutostartPageDriver.h"
#include "tests/ui/OtherConnection.h"
#include "tests/ui/SaveContext.h"
#include "tests/ui/sequence/RandomSteps.h"
#include "tests/ui/StoredSheetTest.h"
#include "WaylineDll/Host.h"

namespace {

constexpr int kStepsOnASheet = 60;

int StepsToTake() { return FullSize() ? 5000 : 300; }

// What lists may be before a sheet is opened: without headers, with equal orders and with gaps.
constexpr char kUnusualSettings[] =
    "DELETE FROM AutoStart WHERE ProfileId = 100 AND RecordType = 1;"
    "UPDATE Profiles SET DefaultAutostart = 0 WHERE ProfileId IN (2003, 10001);"
    "INSERT INTO AutoStart (ProfileId, Phase, ItemOrder, RecordType, Name, Modifiable, Program, Parameters, Directory, "
    "DirectoryRegistryKey, ShowAdvanced, InitialSize, ReconnectOption, ConnectionOption, DelaySeconds, WaitMode, "
    "DefinitionLocked) "
    "SELECT 10001, 700, 4, 2, 'Visit', 1, 'C:\\Tools\\visit.exe', '', '', '', 0, 0, 0, 0, 0, 0, 0 UNION ALL "
    "SELECT 10001, 700, 4, 2, 'Stay', 1, 'C:\\Tools\\stay.exe', '', '', '', 0, 0, 0, 0, 0, 0, 0 UNION ALL "
    "SELECT 2000, 300, 9, 2, 'Late', 1, 'C:\\Tools\\late.exe', '', '', '', 0, 0, 0, 0, 0, 0, 0";

class AutostartSequence : public RandomSteps {
 protected:
  AutostartSequence() {
    EXPECT_EQ(OpenSettings(file_), std::nullopt);
    RunSql(file_, kUnusualSettings);
  }
  ~AutostartSequence() override {
    sheet_.reset();
    CloseSettings();
  }

  // Steps

  void Step() {
    ++steps_;
    if (!model_->Overrides() && !OneIn(3)) return ClickOverride();
    switch (Below(14)) {
      case 0:
        return ChooseProfile();
      case 1:
        return VisitAnotherTab();
      case 2:
        return OneIn(3) ? ClickOverride() : SelectNothing();
      case 3:
      case 4:
        return Add();
      case 5:
        return Change();
      case 6:
        return Remove();
      case 7:
      case 8:
        return Move(IDC_AUTOSTART_UP);
      case 9:
      case 10:
        return Move(IDC_AUTOSTART_DOWN);
      default:
        return SelectLine();
    }
  }

  void ChooseProfile() {
    const auto profiles = SelectableProfiles(context_.profiles);
    const SelectableProfile& profile = OneOf(profiles);
    story_ << "profile " << profile.id << "; ";
    sheet_->Pick(IDC_PROFILE_COMBO, profile.name);
    model_->Choose(profile.id);
    if (onPage_) model_->ShowPage();
  }

  void VisitAnotherTab() {
    static const std::vector<std::wstring> kTabs = {L"General", L"Proxy"};
    const std::wstring& tab = OneOf(kTabs);
    story_ << ToUtf8(tab) << "; ";
    sheet_->SelectTab(tab);
    onPage_ = false;
    if (OneIn(3)) ChooseProfile();
    if (OneIn(6)) ChooseProfile();
    story_ << "Autostart; ";
    sheet_->SelectTab(L"Autostart");
    onPage_ = true;
    model_->ShowPage();
  }

  void ClickOverride() {
    story_ << "override; ";
    sheet_->Click(IDC_OVERRIDE_CHECK);
    model_->ClickOverride();
  }

  void SelectLine() {
    if (!model_->Overrides()) return;
    const int line = Below(static_cast<int>(model_->Lines().size()));
    story_ << "line " << line << "; ";
    page_->SelectLine(line);
    model_->SelectLine(line);
  }

  void SelectNothing() {
    if (!model_->Overrides()) return;
    story_ << "nothing; ";
    page_->SelectNothing();
    // A tree that gets the focus from a button that goes out of use selects an item that can be seen.
    const int line = page_->SelectedLine();
    line < 0 ? model_->SelectNothing() : model_->SelectLine(line);
  }

  std::optional<std::wstring> AnyPhase() {
    if (!OneIn(3)) return std::nullopt;
    return OneOf(model_->PhaseTitles());
  }

  void Add() {
    if (!model_->Overrides()) return;
    story_ << "add ";
    const EntryEditorDriver editor(*sheet_, IDC_AUTOSTART_ADD);
    EXPECT_EQ(editor.Phase(), model_->SelectedPhaseTitle());
    Edit(editor, [this](const auto&... edited) { model_->Add(edited...); });
  }

  void Change() {
    if (!model_->IsEntrySelected()) return;
    story_ << "change ";
    if (!model_->IsModifiable()) return ExpectRefusal(IDC_AUTOSTART_CHANGE);
    const EntryEditorDriver editor(*sheet_, IDC_AUTOSTART_CHANGE);
    EXPECT_EQ(editor.Name(), model_->SelectedName());
    EXPECT_EQ(editor.Phase(), model_->SelectedPhaseTitle());
    Edit(editor, [this](const auto&... edited) { model_->Change(edited...); });
  }

  template <typename Store>
  void Edit(const EntryEditorDriver& editor, const Store& store) {
    const std::wstring number = std::to_wstring(Below(50));
    const std::wstring name = L"It's \u4f60 " + number;
    const std::wstring program = L"C:\\Tools\\program" + number + L".exe";
    const auto phase = AnyPhase();
    const bool confirms = !OneIn(5);
    editor.Enter(name, program);
    if (phase) editor.PickPhase(*phase);
    story_ << ToUtf8(number) << (phase ? " in " + ToUtf8(*phase) : "") << (confirms ? "; " : " cancelled; ");
    editor.Close(confirms ? IDOK : IDCANCEL);
    if (confirms) store(name, program, phase);
  }

  void Remove() {
    if (!model_->IsEntrySelected()) return;
    story_ << "remove";
    if (!model_->IsModifiable()) return ExpectRefusal(IDC_AUTOSTART_REMOVE);
    sheet_->Click(IDC_AUTOSTART_REMOVE);
    ASSERT_EQ(sheet_->MessageBoxText(),
              L"Do you want to remove the '" + model_->SelectedName() + L"' autostart entry?");
    const bool confirms = !OneIn(4);
    story_ << (confirms ? "; " : " not; ");
    sheet_->AnswerMessageBox(confirms ? IDYES : IDNO);
    if (confirms) model_->Remove();
  }

  void Move(int button) {
    const bool up = button == IDC_AUTOSTART_UP;
    if (!(up ? model_->CanMoveUp() : model_->CanMoveDown())) return;
    story_ << (up ? "up; " : "down; ");
    if (!model_->IsModifiable()) return ExpectRefusal(button);
    sheet_->Click(button);
    up ? model_->MoveUp() : model_->MoveDown();
  }

  void ExpectRefusal(int button) {
    story_ << "refused; ";
    sheet_->Click(button);
    ASSERT_NE(sheet_->MessageBoxText(), std::nullopt);
    EXPECT_TRUE(sheet_->MessageBoxText()->starts_with(L"This program has been pre-configured"));
    sheet_->AnswerMessageBox(IDOK);
  }

  // What is seen

  void ExpectPage() {
    ASSERT_EQ(sheet_->MessageBoxText(), std::nullopt);
    EXPECT_EQ(sheet_->SelectedValue(IDC_PROFILE_COMBO), model_->ChosenId());
    EXPECT_EQ(sheet_->IsChecked(IDC_OVERRIDE_CHECK), model_->Overrides());
    EXPECT_EQ(sheet_->IsEnabled(IDC_AUTOSTART_TREE), model_->Overrides());
    EXPECT_EQ(page_->CanAdd(), model_->Overrides());
    EXPECT_EQ(page_->Lines(), model_->Lines());
    EXPECT_EQ(page_->SelectedLine(), model_->SelectedLine());
    EXPECT_EQ(page_->CanChange(), model_->IsEntrySelected());
    EXPECT_EQ(page_->CanRemove(), model_->IsEntrySelected());
    EXPECT_EQ(page_->CanMoveUp(), model_->CanMoveUp());
    EXPECT_EQ(page_->CanMoveDown(), model_->CanMoveDown());
  }

  // Opens the sheet, takes many steps on its page and closes it, most often with OK.
  void UseSheet() {
    context_ = {};
    context_.mode = SheetMode::Full;
    ASSERT_EQ(LoadProfiles(context_.profiles), std::nullopt);
    model_.emplace(file_);
    const uint32_t first = OneOf(SelectableProfiles(context_.profiles)).id;
    story_ << "on profile " << first << ": ";
    context_.currentProfile = context_.profiles.at(first);
    model_->Choose(first);
    sheet_.emplace(context_);
    page_.emplace(*sheet_);
    sheet_->SelectTab(L"Autostart");
    model_->ShowPage();
    ExpectPage();
    for (int step = 0; step < kStepsOnASheet && !HasFailure(); ++step) {
      Step();
      if (!HasFatalFailure()) ExpectPage();
    }
    if (!HasFailure()) OneIn(4) ? Cancel() : Confirm();
  }

  void Confirm() {
    const std::wstring expected = folder_.File(L"Expected.db");
    ASSERT_TRUE(CopyFileW(file_.c_str(), expected.c_str(), FALSE));
    RunSql(expected, model_->Statements());
    const uint32_t chosen = model_->ChosenId();
    const std::vector<std::wstring> lines = model_->Lines();
    story_ << "OK";
    sheet_->PressOk();
    ASSERT_EQ(sheet_->Result(), kSheetConfirmed);
    sheet_.reset();
    SaveContext(context_);
    EXPECT_EQ(AllRows(file_), AllRows(expected)) << model_->Statements();
    AutostartModel reloaded(file_);
    reloaded.Choose(chosen);
    EXPECT_EQ(reloaded.Lines(), lines);
  }

  void Cancel() {
    const std::multiset<std::string> before = AllRows(file_);
    story_ << "Cancel";
    sheet_->PressCancel();
    ASSERT_EQ(sheet_->Result(), kSheetCancelled);
    sheet_.reset();
    DiscardChanges();
    EXPECT_EQ(AllRows(file_), before);
  }

  TemporaryFolder folder_;
  std::wstring file_ = folder_.File(L"Wayline.db");
  LoginPropertiesContext context_;
  std::optional<AutostartModel> model_;
  std::optional<SheetDriver> sheet_;
  std::optional<AutostartPageDriver> page_;
  bool onPage_ = true;
  int steps_ = 0;
};

}  // namespace

TEST_F(AutostartSequence, ShowsAndSavesWhatWasDoneWhateverTheOrder) {
  while (steps_ < StepsToTake() && !HasFailure()) {
    story_.str({});
    UseSheet();
  }
}
