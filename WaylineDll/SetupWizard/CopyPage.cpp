#include "WaylineDll/SetupWizard/CopyPage.h"

#include <windowsx.h>

#include <string>

#include "WaylineDll/OpenStore.h"
#include "WaylineDll/SetupWizard/DialogKeys.h"
#include "WaylineDll/SetupWizard/ListItems.h"
#include "WaylineDll/SetupWizard/WizardStrings.h"
#include "WaylineDll/Store/SettingsStore.h"
#include "WaylineDll/StringDb.h"

namespace {

constexpr uint32_t kNoSource = 0;

std::wstring Line(unsigned text, std::wstring_view item = {}) {
  return LoadStringWithSubS(ModuleId::ClientLibrary, text, false, {item}) + L"\r\n";
}

CopiedSettings LoadCopied(uint32_t profileId) {
  PreferenceTable preferences;
  AutoStartTable items;
  if (SettingsStore* const store = OpenStore()) {
    store->LoadOwnPreferences(profileId, preferences);
    store->LoadOwnAutoStart(profileId, items);
  }
  return CopiedOf(preferences, items);
}

std::wstring TextOf(const CopiedSettings& copied) {
  std::wstring text = Line(IDS_COPIED_PREFERENCES, std::to_wstring(copied.preferences));
  text += Line(copied.programs.empty() ? IDS_COPIED_NO_PROGRAMS : IDS_COPIED_PROGRAMS);
  for (const std::wstring& program : copied.programs) text += Line(IDS_COPIED_PROGRAM, program);
  return text + Line(IDS_COPIED_OVERRIDES);
}

}  // namespace

int CopyPage::OnInitDialog(int64_t parameter) {
  const HWND list = Control(IDC_WIZARD_COPY);
  for (const OfferedProfile& source : SourcesToCopy(Run().Profiles())) AddComboItem(list, source.name, source.id);
  // Comes first, whatever the names are.
  const std::wstring nothing = LoadStringDb(ModuleId::ClientLibrary, IDS_COPY_NOTHING, false);
  ComboBox_SetItemData(list, ComboBox_InsertString(list, 0, nothing.c_str()), kNoSource);
  LeaveKeysToDialog(Control(IDC_WIZARD_COPIED));
  return WizardPageDialog::OnInitDialog(parameter);
}

int CopyPage::SetWindowControls() {
  SelectComboItem(Control(IDC_WIZARD_COPY), Draft().copySource);
  ShowCopied();
  return 1;
}

int CopyPage::ReadWindowControls() {
  Draft().copySource = ChosenSource();
  return 1;
}

int CopyPage::OnCommand(uint64_t command, int64_t control) {
  if (LOWORD(command) == IDC_WIZARD_COPY && HIWORD(command) == CBN_SELCHANGE) ShowCopied();
  return WizardPageDialog::OnCommand(command, control);
}

uint32_t CopyPage::ChosenSource() const { return SelectedComboItem(Control(IDC_WIZARD_COPY)).value_or(kNoSource); }

void CopyPage::ShowCopied() {
  const uint32_t source = ChosenSource();
  const std::wstring text = source != kNoSource ? TextOf(LoadCopied(source)) : std::wstring();
  SetDlgItemTextW(GetWindow(), IDC_WIZARD_COPIED, text.c_str());
  EnableWindow(Control(IDC_WIZARD_COPIED_LABEL), source != kNoSource ? TRUE : FALSE);
  EnableWindow(Control(IDC_WIZARD_COPIED), source != kNoSource ? TRUE : FALSE);
}
