#include "LoginProperties/WiFiSwitching/AutoReconnectDialog.h"

#include <windowsx.h>

#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "WaylineDll/Messages.h"

namespace {

constexpr uint32_t kHelpTopic = 1132;

void FollowDefaults(Profile& profile, bool follow) { profile.SetOverrideAutoReconnectDefaults(!follow); }

}  // namespace

int AutoReconnectDialog::SetWindowControls() {
  ProfileDataDialog::SetWindowControls();
  const auto& profile = GetContext().currentProfile;
  ShowOverride(!profile || !profile->GetOverrideAutoReconnectDefaults());
  return 1;
}

int AutoReconnectDialog::OnHelp(int64_t) {
  DisplayHelp(kHelpTopic, nullptr, kHelpCommand);
  return 1;
}

int AutoReconnectDialog::OnCommand(uint64_t command, int64_t) {
  switch (LOWORD(command)) {
    case IDC_OVERRIDE_CHECK:
      return OnOverrideClicked(FollowDefaults);
    case IDC_PROFILE_COMBO:
      return HIWORD(command) == CBN_SELCHANGE ? OnProfileSelected() : 0;
    default:
      return 0;
  }
}

int AutoReconnectDialog::OnNotify(uint64_t, int64_t record) {
  return OnSheetNotification(record, kHelpTopic, GetWindow());
}
