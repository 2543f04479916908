#include "LoginProperties/Autostart/AutostartDialog.h"

#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"

namespace {

constexpr wchar_t kPolicyName[] = L"AutoStart";

constexpr PageTraits kTraits = {
    .helpTopic = 1038,
    .ownsHelpOfButton = false,
    .policyName = kPolicyName,
    .followsDefaults = [](const Profile& profile) { return profile.GetDefaultAutostart(); },
    .followDefaults = [](Profile& profile, bool follow) { profile.SetDefaultAutostart(follow); },
};

}  // namespace

AutostartDialog::AutostartDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow)
    : ProfileDataDialog(instance, templateId, parentWindow, kTraits) {}

int AutostartDialog::OnInitDialog(int64_t parameter) {
  ProfileDataDialog::OnInitDialog(parameter);
  // Here the policy also keeps the user from choosing otherwise.
  if (ApplyOverridePolicy()) EnableControl(GetWindow(), IDC_OVERRIDE_CHECK, false);
  return 1;
}

int AutostartDialog::SetWindowControls() {
  ProfileDataDialog::SetWindowControls();
  ShowOverride();
  return 1;
}
