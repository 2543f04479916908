#include "LoginProperties/General/GeneralDialog.h"

#include "WaylineDll/Appearance.h"

namespace {

constexpr PageTraits kTraits = {
    .helpTopic = 1031,
    .ownsHelpOfKey = true,
    .ownsHelpOfButton = false,
    .idleSelectorResult = 1,
};

}  // namespace

GeneralDialog::GeneralDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow)
    : ProfileDataDialog(instance, templateId, parentWindow, kTraits) {}

int GeneralDialog::OnInitDialog(int64_t parameter) {
  // As the first page of the full sheet it is created before the sheet is seen.
  const HWND sheet = GetParent(GetWindow());
  SetWindowLongPtrW(sheet, GWL_EXSTYLE, GetWindowLongPtrW(sheet, GWL_EXSTYLE) & ~WS_EX_CONTEXTHELP);
  CenterWindow(sheet, nullptr);
  return ProfileDataDialog::OnInitDialog(parameter);
}
