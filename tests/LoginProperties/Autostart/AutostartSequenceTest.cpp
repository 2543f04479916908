// Random steps of a user on the "Autostart" page of the real sheet.

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/LoginProperties/Autostart/AutostartPageModel.h"
#include "tests/ui/AutostartPageDriver.h"
#include "tests/ui/sequence/PageSequence.h"

namespace {

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

class AutostartSequence : public PageSequence<AutostartPageModel, AutostartPageDriver> {
 protected:
  AutostartSequence() : PageSequence(L"Autostart", {L"General", L"Proxy"}, kUnusualSettings) {}

  AutostartPageModel MakeModel() override { return AutostartPageModel(file_); }

  // Steps

  void Step() override {
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

  void ExpectPage() override {
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

  void Confirm() override {
    const uint32_t chosen = model_->ChosenId();
    const std::vector<std::wstring> lines = model_->Lines();
    PageSequence::Confirm();
    AutostartPageModel saved(file_);
    saved.Choose(chosen);
    EXPECT_EQ(saved.Lines(), lines);
  }
};

}  // namespace

TEST_F(AutostartSequence, ShowsAndSavesWhatWasDoneWhateverTheOrder) { TakeSteps(); }
