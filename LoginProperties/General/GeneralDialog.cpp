#include "LoginProperties/General/GeneralDialog.h"

#include <windowsx.h>

#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "WaylineDll/Appearance.h"
#include "WaylineDll/Messages.h"

namespace {

constexpr uint32_t kHelpTopic = 1031;

}  // namespace

int GeneralDialog::OnInitDialog(int64_t parameter) {
  // As the first page of the full sheet it is created before the sheet is seen.
  const HWND sheet = GetParent(GetWindow());
  SetWindowLongPtrW(sheet, GWL_EXSTYLE, GetWindowLongPtrW(sheet, GWL_EXSTYLE) & ~WS_EX_CONTEXTHELP);
  CenterWindow(sheet, nullptr);
  return ProfileDataDialog::OnInitDialog(parameter);
}

int GeneralDialog::OnHelp(int64_t) {
  DisplayHelp(kHelpTopic, GetWindow(), kHelpCommand);
  return 1;
}

int GeneralDialog::OnCommand(uint64_t command, int64_t) {
  if (LOWORD(command) != IDC_PROFILE_COMBO) return 0;
  return HIWORD(command) == CBN_SELCHANGE ? OnProfileSelected() : 1;
}

int GeneralDialog::OnNotify(uint64_t, int64_t record) { return OnSheetNotification(record, kHelpTopic, nullptr); }
