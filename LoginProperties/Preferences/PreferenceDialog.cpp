#include "LoginProperties/Preferences/PreferenceDialog.h"

#include <windowsx.h>

#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "WaylineDll/Messages.h"

namespace {

constexpr uint32_t kHelpTopic = 1033;
constexpr wchar_t kPolicyName[] = L"Preference";

}  // namespace

int PreferenceDialog::OnInitDialog(int64_t parameter) {
  ProfileDataDialog::OnInitDialog(parameter);
  ApplyOverridePolicy(kPolicyName, &Profile::SetDefaultPreferences);
  return 1;
}

int PreferenceDialog::SetWindowControls() {
  ProfileDataDialog::SetWindowControls();
  const auto& profile = GetContext().currentProfile;
  ShowOverride(!profile || profile->GetDefaultPreferences());
  return 1;
}

int PreferenceDialog::OnHelp(int64_t) {
  DisplayHelp(kHelpTopic, nullptr, kHelpCommand);
  return 1;
}

int PreferenceDialog::OnCommand(uint64_t command, int64_t) {
  switch (LOWORD(command)) {
    case IDC_OVERRIDE_CHECK:
      return OnOverrideClicked(&Profile::SetDefaultPreferences);
    case IDC_PROFILE_COMBO:
      return HIWORD(command) == CBN_SELCHANGE ? OnProfileSelected() : 0;
    default:
      return 0;
  }
}

int PreferenceDialog::OnNotify(uint64_t, int64_t record) {
  return OnSheetNotification(record, kHelpTopic, GetWindow());
}
