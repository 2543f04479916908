#include "LoginProperties/General/RenameProfile.h"

#include <windowsx.h>

#include <utility>

#include "LoginProperties/General/RenameProfileControls.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"

RenameProfile::RenameProfile(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow, std::wstring name)
    : BaseDialog(instance, templateId, parentWindow), currentName(std::move(name)) {}

int RenameProfile::ReadWindowControls() {
  constexpr size_t kLongestName = 259;
  const std::wstring name = ControlText(GetWindow(), IDC_RENAME_NAME, kLongestName);
  if (name.empty()) return 0;
  newName = name;
  return 1;
}

int RenameProfile::OnInitDialog(int64_t) {
  constexpr WPARAM kLongestTypedName = 80;
  const HWND edit = GetDlgItem(GetWindow(), IDC_RENAME_NAME);
  SetWindowTextW(edit, currentName.c_str());
  SetFocus(edit);
  Edit_SetSel(edit, 0, -1);  // typing replaces the name, as in every field that gets the focus
  PostMessageW(edit, EM_SETLIMITTEXT, kLongestTypedName, 0);
  return 0;
}
