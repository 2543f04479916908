#include "LoginProperties/Autostart/AutostartDialog.h"

#include <windowsx.h>

#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "WaylineDll/Messages.h"

namespace {

constexpr uint32_t kHelpTopic = 1038;
constexpr wchar_t kPolicyName[] = L"AutoStart";

}  // namespace

int AutostartDialog::OnInitDialog(int64_t parameter) {
  ProfileDataDialog::OnInitDialog(parameter);
  ApplyOverridePolicy(kPolicyName, &Profile::SetDefaultAutostart);
  return 1;
}

int AutostartDialog::SetWindowControls() {
  ProfileDataDialog::SetWindowControls();
  const auto& profile = GetContext().currentProfile;
  ShowOverride(!profile || profile->GetDefaultAutostart());
  return 1;
}

int AutostartDialog::OnHelp(int64_t) {
  DisplayHelp(kHelpTopic, nullptr, kHelpCommand);
  return 1;
}

int AutostartDialog::OnCommand(uint64_t command, int64_t) {
  switch (LOWORD(command)) {
    case IDC_OVERRIDE_CHECK:
      return OnOverrideClicked(&Profile::SetDefaultAutostart);
    case IDC_PROFILE_COMBO:
      return HIWORD(command) == CBN_SELCHANGE ? OnProfileSelected() : 0;
    default:
      return 0;
  }
}

int AutostartDialog::OnNotify(uint64_t, int64_t record) { return OnSheetNotification(record, kHelpTopic, nullptr); }
