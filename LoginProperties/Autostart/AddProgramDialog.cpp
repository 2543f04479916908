#include "LoginProperties/Autostart/AddProgramDialog.h"

#include <windowsx.h>

#include <utility>

#include "LoginProperties/Autostart/AddProgramControls.h"
#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "WaylineDll/Appearance.h"

AddProgramDialog::AddProgramDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow,
                                   std::shared_ptr<AutoStartItem> item)
    : BaseDialog(instance, templateId, parentWindow), item_(std::move(item)) {}

int AddProgramDialog::OnInitDialog(int64_t) {
  CenterWindow(GetWindow(), GetParent(GetWindow()));
  return SetWindowControls();
}

int AddProgramDialog::SetWindowControls() {
  SetDlgItemTextW(GetWindow(), IDC_PROGRAM_NAME, item_->fields.name.c_str());
  SetDlgItemTextW(GetWindow(), IDC_PROGRAM_FILE, item_->fields.program.c_str());
  const HWND phases = GetDlgItem(GetWindow(), IDC_PROGRAM_PHASE);
  for (const auto& [id, record] : GetContext().autoStartItems) {
    if (!record || record->fields.recordType != AutoStartRecordType::PhaseHeader) continue;
    const int index = ComboBox_AddString(phases, record->fields.name.c_str());
    ComboBox_SetItemData(phases, index, record->fields.phase);
    if (record->fields.phase == item_->fields.phase) ComboBox_SetCurSel(phases, index);
  }
  return 1;
}

int AddProgramDialog::ReadWindowControls() {
  item_->fields.name = ControlText(GetWindow(), IDC_PROGRAM_NAME);
  item_->fields.program = ControlText(GetWindow(), IDC_PROGRAM_FILE);
  const HWND phases = GetDlgItem(GetWindow(), IDC_PROGRAM_PHASE);
  const int index = ComboBox_GetCurSel(phases);
  if (index != CB_ERR) item_->fields.phase = static_cast<uint16_t>(ComboBox_GetItemData(phases, index));
  return 1;
}

int AddProgramDialog::OnCommand(uint64_t command, int64_t) {
  const int button = LOWORD(command);
  if (button != IDOK && button != IDCANCEL) return 0;
  if (button == IDOK) ReadWindowControls();
  EndDialog(GetWindow(), button);
  return 1;
}
