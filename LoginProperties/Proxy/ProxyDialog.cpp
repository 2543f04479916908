#include "LoginProperties/Proxy/ProxyDialog.h"

#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"

namespace {

constexpr wchar_t kPolicyName[] = L"Proxy";

constexpr PageTraits kTraits = {
    .helpTopic = 1050,
    .policyName = kPolicyName,
    .followsDefaults = [](const Profile& profile) { return profile.GetDefaultProxy(); },
    .followDefaults = [](Profile& profile, bool follow) { profile.SetDefaultProxy(follow); },
};

}  // namespace

ProxyDialog::ProxyDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow)
    : ProfileDataDialog(instance, templateId, parentWindow, kTraits) {}

int ProxyDialog::OnInitDialog(int64_t parameter) {
  ProfileDataDialog::OnInitDialog(parameter);
  if (ApplyOverridePolicy()) EnableControl(GetWindow(), IDC_OVERRIDE_CHECK, true);
  return 1;
}

int ProxyDialog::SetWindowControls() {
  ProfileDataDialog::SetWindowControls();
  ShowOverride();
  return 1;
}
