#include "LoginProperties/ProfilePage/DialogHelpers.h"

#include <windowsx.h>

#include "LoginProperties/ProfilePage/CutText.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "NetUtilities/Text/SplitNonEmpty.h"
#include "WaylineDll/StringDb.h"

void EnableControl(HWND page, int id, bool enable) { EnableWindow(GetDlgItem(page, id), enable); }

void HideControl(HWND page, int id) { ShowWindow(GetDlgItem(page, id), SW_HIDE); }

void ShowControl(HWND page, int id) { ShowWindow(GetDlgItem(page, id), SW_SHOW); }

bool IsControlChecked(HWND page, int id) { return IsDlgButtonChecked(page, id) != BST_UNCHECKED; }

void CheckControl(HWND page, int id, bool check) { CheckDlgButton(page, id, check ? BST_CHECKED : BST_UNCHECKED); }

std::wstring ControlText(HWND page, int id) {
  const int length = GetWindowTextLengthW(GetDlgItem(page, id));
  std::wstring text(static_cast<size_t>(length), L'\0');
  text.resize(GetDlgItemTextW(page, id, text.data(), length + 1));
  return text;
}

std::wstring ControlText(HWND page, int id, size_t longest) { return CutText(ControlText(page, id), longest); }

std::wstring OwnString(unsigned id) { return LoadStringDb(ModuleId::LoginProperties, id, false); }

void FillComboFromString(HWND combo, unsigned stringId) {
  ComboBox_ResetContent(combo);
  for (const std::wstring& item : SplitNonEmpty(OwnString(stringId), L"~")) {
    ComboBox_AddString(combo, item.c_str());
  }
}

void SetControlTextHidden(HWND page, int id, const std::wstring& text) {
  if (page == nullptr) return;
  HideControl(page, id);
  SetDlgItemTextW(page, id, text.c_str());
  ShowControl(page, id);
}

void EnableControlsAfterOverride(HWND page, bool enable) {
  HWND control = GetDlgItem(page, IDC_OVERRIDE_CHECK);
  while ((control = GetNextSibling(control)) != nullptr) EnableWindow(control, enable);
}

void RemoveContextHelpButton(HWND sheet) {
  SetWindowLongPtrW(sheet, GWL_EXSTYLE, GetWindowLongPtrW(sheet, GWL_EXSTYLE) & ~WS_EX_CONTEXTHELP);
}
