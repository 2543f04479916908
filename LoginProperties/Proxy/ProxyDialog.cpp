#include "LoginProperties/Proxy/ProxyDialog.h"

#include <windowsx.h>

#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "WaylineDll/Messages.h"

namespace {

constexpr uint32_t kHelpTopic = 1050;
constexpr wchar_t kPolicyName[] = L"Proxy";

}  // namespace

int ProxyDialog::OnInitDialog(int64_t parameter) {
  ProfileDataDialog::OnInitDialog(parameter);
  ApplyOverridePolicy(kPolicyName, &Profile::SetDefaultProxy);
  return 1;
}

int ProxyDialog::SetWindowControls() {
  ProfileDataDialog::SetWindowControls();
  const auto& profile = GetContext().currentProfile;
  ShowOverride(!profile || profile->GetDefaultProxy());
  return 1;
}

int ProxyDialog::OnHelp(int64_t) {
  DisplayHelp(kHelpTopic, nullptr, kHelpCommand);
  return 1;
}

int ProxyDialog::OnCommand(uint64_t command, int64_t) {
  switch (LOWORD(command)) {
    case IDC_OVERRIDE_CHECK:
      return OnOverrideClicked(&Profile::SetDefaultProxy);
    case IDC_PROFILE_COMBO:
      return HIWORD(command) == CBN_SELCHANGE ? OnProfileSelected() : 0;
    default:
      return 0;
  }
}

int ProxyDialog::OnNotify(uint64_t, int64_t record) { return OnSheetNotification(record, kHelpTopic, GetWindow()); }
