#include "LoginProperties/Autostart/AddProgramDialog.h"

#include <windowsx.h>

#include <ranges>
#include <string>
#include <utility>

#include "LoginProperties/Autostart/AddProgramControls.h"
#include "LoginProperties/Autostart/AutostartStrings.h"
#include "LoginProperties/Autostart/BrowsedFile.h"
#include "LoginProperties/Autostart/DefaultBrowser.h"
#include "LoginProperties/Autostart/DelayOptions.h"
#include "LoginProperties/Autostart/DroppedWidth.h"
#include "LoginProperties/Autostart/FileChoice.h"
#include "LoginProperties/Autostart/ProgramChoice.h"
#include "LoginProperties/Autostart/StartPhases.h"
#include "LoginProperties/Autostart/TrialStart.h"
#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/ProfilePage/CutText.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/ProfilePage/FrozenDrawing.h"
#include "NetUtilities/Text/SplitNonEmpty.h"
#include "NetUtilities/Text/Trim.h"
#include "WaylineDll/Appearance.h"
#include "WaylineDll/Help.h"
#include "WaylineDll/Messages.h"
#include "WaylineDll/Programs.h"

namespace {

constexpr uint32_t kHelpTopic = 1128;
constexpr uint32_t kHelpCommand = 15;

// What the user can type. What is there already may be longer, and stays whole.
constexpr int kLongestName = 50;
constexpr int kLongestPath = 200;
constexpr int kLongestParameters = 259;

// What only the administrator may change in an entry that is locked.
constexpr int kLockable[] = {IDC_PROGRAM_FILE, IDC_PROGRAM_DIRECTORY, IDC_PROGRAM_PARAMETERS,
                             IDC_PROGRAM_NAME, IDC_PROGRAM_PHASE,     IDC_PROGRAM_BROWSE};

constexpr int kLists[] = {IDC_PROGRAM_NAME,      IDC_PROGRAM_PHASE,      IDC_PROGRAM_SIZE,
                          IDC_PROGRAM_RECONNECT, IDC_PROGRAM_CONNECTION, IDC_PROGRAM_DELAY};

// The index of the new item.
int AddItem(HWND combo, const std::wstring& text, uint32_t value) {
  const int index = ComboBox_AddString(combo, text.c_str());
  ComboBox_SetItemData(combo, index, value);
  return index;
}

uint32_t ValueOf(HWND combo, int index) { return static_cast<uint32_t>(ComboBox_GetItemData(combo, index)); }

void FillOptions(HWND combo, unsigned stringId, int32_t selected) {
  FillComboFromString(combo, stringId);
  ComboBox_SetCurSel(combo, selected);
}

std::wstring InstallFolderOf(const std::wstring& program) {
  wchar_t path[MAX_PATH] = {};
  wchar_t folder[MAX_PATH] = {};
  CutText(program, MAX_PATH - 1).copy(path, MAX_PATH - 1);
  GetProgInstallDirStr(path, MAX_PATH, folder, MAX_PATH);
  return folder;
}

std::wstring DefaultBrowserProgram() { return GetDefaultBrowserApp().command; }

}  // namespace

AddProgramDialog::AddProgramDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow,
                                   std::shared_ptr<AutoStartItem> item)
    : BaseDialog(instance, templateId, parentWindow), item_(std::move(item)) {}

HWND AddProgramDialog::Control(int id) const { return GetDlgItem(GetWindow(), id); }

int AddProgramDialog::SelectedIndex(int combo) const { return ComboBox_GetCurSel(Control(combo)); }

int AddProgramDialog::OnInitDialog(int64_t) {
  edited_ = item_->fields;
  programs_ = LoadInstalledProgramList();
  CenterWindow(GetWindow(), GetParent(GetWindow()));
  advancedOptions_.Attach(GetWindow());
  CheckControl(GetWindow(), IDC_PROGRAM_ADVANCED_CHECK, edited_.showAdvanced);
  if (!edited_.showAdvanced) advancedOptions_.Show(false);
  DisableLocked();
  return SetWindowControls();
}

void AddProgramDialog::DisableLocked() const {
  if (edited_.modifiable || !edited_.definitionLocked) return;
  for (const int id : kLockable) EnableControl(GetWindow(), id, false);
}

int AddProgramDialog::SetWindowControls() {
  LimitTexts();
  FillNames();
  FillPhases();
  if (edited_.directory.empty() && !edited_.directoryRegistryKey.empty()) {
    registryDirectory_ = GetRegistryString(edited_.directoryRegistryKey);
  }
  ShowTexts();
  EnableTest();
  FillOptions(Control(IDC_PROGRAM_SIZE), IDS_INITIAL_SIZES, edited_.initialSize);
  FillOptions(Control(IDC_PROGRAM_RECONNECT), IDS_RECONNECT_OPTIONS, edited_.reconnectOption);
  FillOptions(Control(IDC_PROGRAM_CONNECTION), IDS_CONNECTION_OPTIONS, edited_.connectionOption);
  ShowDelays();
  for (const int list : kLists) FitDroppedWidth(Control(list));
  return 1;
}

void AddProgramDialog::LimitTexts() const {
  ComboBox_LimitText(Control(IDC_PROGRAM_NAME), kLongestName);
  Edit_LimitText(Control(IDC_PROGRAM_FILE), kLongestPath);
  Edit_LimitText(Control(IDC_PROGRAM_DIRECTORY), kLongestPath);
  Edit_LimitText(Control(IDC_PROGRAM_PARAMETERS), kLongestParameters);
}

void AddProgramDialog::FillNames() const {
  constexpr size_t kUsualName = 64;
  const HWND names = Control(IDC_PROGRAM_NAME);
  const FrozenDrawing frozen(names);
  ComboBox_ResetContent(names);
  SendMessageW(names, CB_INITSTORAGE, programs_.size(), static_cast<LPARAM>(programs_.size() * kUsualName));
  for (const Program& program : programs_) AddItem(names, program.name, program.id);
  ComboBox_SetCurSel(names, AddItem(names, edited_.name, ValueOfOwnName(edited_)));
}

void AddProgramDialog::FillPhases() const {
  const HWND phases = Control(IDC_PROGRAM_PHASE);
  ComboBox_ResetContent(phases);
  for (const auto& [name, phase] : StartPhases(GetContext().autoStartItems)) {
    const int index = AddItem(phases, name, phase);
    if (phase == edited_.phase && ComboBox_GetCurSel(phases) < 0) ComboBox_SetCurSel(phases, index);
  }
}

void AddProgramDialog::ShowTexts() const {
  std::wstring program;
  if (IsDefaultBrowserEntry(edited_.name)) program = DefaultBrowserProgram();
  if (program.empty()) program = edited_.program;
  const std::wstring& directory = edited_.directory.empty() ? registryDirectory_ : edited_.directory;
  SetDlgItemTextW(GetWindow(), IDC_PROGRAM_FILE, program.c_str());
  SetDlgItemTextW(GetWindow(), IDC_PROGRAM_DIRECTORY, directory.c_str());
  SetDlgItemTextW(GetWindow(), IDC_PROGRAM_PARAMETERS, edited_.parameters.c_str());
}

void AddProgramDialog::ShowDelays() const {
  const HWND delays = Control(IDC_PROGRAM_DELAY);
  const int before = ComboBox_GetCurSel(delays);
  const size_t offered = OfferedDelays(SelectedIndex(IDC_PROGRAM_PHASE));
  ComboBox_ResetContent(delays);
  for (const std::wstring& text : SplitNonEmpty(OwnString(IDS_DELAY_OPTIONS), L"|") | std::views::take(offered)) {
    ComboBox_AddString(delays, text.c_str());
  }
  const auto index = IndexOfDelay({edited_.delaySeconds, edited_.waitMode}, offered);
  ComboBox_SetCurSel(delays, index ? static_cast<int>(*index) : before);
}

void AddProgramDialog::EnableTest() const {
  EnableControl(GetWindow(), IDC_PROGRAM_TEST, !Trim(ControlText(GetWindow(), IDC_PROGRAM_FILE)).empty());
}

EntryTexts AddProgramDialog::ReadTexts() const {
  return {.name = ControlText(GetWindow(), IDC_PROGRAM_NAME),
          .program = ControlText(GetWindow(), IDC_PROGRAM_FILE),
          .parameters = ControlText(GetWindow(), IDC_PROGRAM_PARAMETERS),
          .directory = ControlText(GetWindow(), IDC_PROGRAM_DIRECTORY)};
}

int AddProgramDialog::ReadWindowControls() {
  StoreTexts(ReadTexts(), edited_);
  // What the registry says by then is in force while the entry has no directory of its own.
  if (edited_.directory == Trim(registryDirectory_)) edited_.directory.clear();
  StoreIndex(IDC_PROGRAM_SIZE, edited_.initialSize);
  const int phase = SelectedIndex(IDC_PROGRAM_PHASE);
  if (phase >= 0) edited_.phase = static_cast<uint16_t>(ValueOf(Control(IDC_PROGRAM_PHASE), phase));
  return 1;
}

int AddProgramDialog::ValidateWindowControls() {
  switch (FaultOf(ReadTexts())) {
    case EntryFault::NameMissing:
      return Refuse(IDS_AUTOSTART_NAME_MISSING, IDC_PROGRAM_NAME);
    case EntryFault::ProgramMissing:
      return Refuse(IDS_AUTOSTART_PROGRAM_MISSING, IDC_PROGRAM_FILE);
    case EntryFault::None:
      break;
  }
  return 1;
}

int AddProgramDialog::Refuse(unsigned message, int field) const {
  DisplayError(GetWindow(), ModuleId::LoginProperties, message, {}, {}, {});
  SetFocus(Control(field));
  Edit_SetSel(GetFocus(), 0, -1);  // a combo box hands the focus to its edit
  return 0;
}

int AddProgramDialog::OnOk(int64_t parameter) {
  const int result = BaseDialog::OnOk(parameter);
  item_->fields = edited_;
  return result;
}

int AddProgramDialog::OnHelp(int64_t) {
  DisplayHelp(kHelpTopic, GetWindow(), kHelpCommand);
  return 1;
}

int AddProgramDialog::OnCommand(uint64_t command, int64_t) {
  const int id = LOWORD(command);
  const bool isChoice = HIWORD(command) == CBN_SELCHANGE;
  switch (id) {
    case IDC_PROGRAM_ADVANCED_CHECK:
      FoldAdvancedOptions();
      return 1;
    case IDC_PROGRAM_BROWSE:
      Browse();
      return 1;
    case IDC_PROGRAM_TEST:
      StartOnTrial(GetWindow(), ReadTexts(), SelectedIndex(IDC_PROGRAM_SIZE));
      return 1;
    default:
      break;
  }
  if (isChoice) {
    switch (id) {
      case IDC_PROGRAM_NAME:
        TakeProgram();
        return 1;
      case IDC_PROGRAM_PHASE:
        ShowDelays();
        return 1;
      case IDC_PROGRAM_CONNECTION:
        StoreIndex(id, edited_.connectionOption);
        return 1;
      case IDC_PROGRAM_RECONNECT:
        StoreIndex(id, edited_.reconnectOption);
        return 1;
      case IDC_PROGRAM_DELAY:
        TakeDelay();
        return 1;
      default:
        break;
    }
  }
  EnableTest();
  return 0;
}

void AddProgramDialog::FoldAdvancedOptions() {
  edited_.showAdvanced = IsControlChecked(GetWindow(), IDC_PROGRAM_ADVANCED_CHECK);
  advancedOptions_.Show(edited_.showAdvanced);
}

void AddProgramDialog::TakeProgram() const {
  const int index = SelectedIndex(IDC_PROGRAM_NAME);
  const Program* const program = FindProgram(programs_, ValueOf(Control(IDC_PROGRAM_NAME), index));
  if (program == nullptr) return;
  const auto texts = TextsOf(*program, {InstallFolderOf, DefaultBrowserProgram});
  if (!texts) return;
  SetDlgItemTextW(GetWindow(), IDC_PROGRAM_FILE, texts->program.c_str());
  SetDlgItemTextW(GetWindow(), IDC_PROGRAM_DIRECTORY, texts->directory.c_str());
  SetDlgItemTextW(GetWindow(), IDC_PROGRAM_PARAMETERS, texts->parameters.c_str());
}

void AddProgramDialog::TakeDelay() {
  const int index = SelectedIndex(IDC_PROGRAM_DELAY);
  if (index < 0) return;
  const Delay chosen = ChosenDelay(static_cast<size_t>(index), {edited_.delaySeconds, edited_.waitMode});
  edited_.delaySeconds = chosen.seconds;
  edited_.waitMode = chosen.waitMode;
}

void AddProgramDialog::StoreIndex(int combo, int32_t& index) const {
  if (const int selected = SelectedIndex(combo); selected >= 0) index = selected;
}

void AddProgramDialog::Browse() const {
  const auto file = ChooseFile(GetWindow());
  if (!file) return;
  SetDlgItemTextW(GetWindow(), IDC_PROGRAM_FILE, BrowsedProgram(*file).c_str());
  const std::wstring name = BrowsedName(*file);
  if (!name.empty()) SetDlgItemTextW(GetWindow(), IDC_PROGRAM_NAME, name.c_str());
  if (GetWindowTextLengthW(Control(IDC_PROGRAM_DIRECTORY)) == 0) {
    SetDlgItemTextW(GetWindow(), IDC_PROGRAM_DIRECTORY, BrowsedFolder(*file).c_str());
  }
}
