#include "LoginProperties/ProfilePage/ProfileDataDialog.h"

#include <windowsx.h>

#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/ProfilePage/ConfigCache.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/ProfilePage/OverridePolicy.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/ProfilePage/ProfileSelector.h"
#include "LoginProperties/SheetLog.h"
#include "NetUtilities/Registry/RegistryKey.h"
#include "WaylineDll/Help.h"
#include "WaylineDll/ProxyConfigs.h"

namespace {

// The title of its tab.
std::wstring TitleOf(HWND page) {
  std::wstring title(static_cast<size_t>(GetWindowTextLengthW(page)), L'\0');
  GetWindowTextW(page, title.data(), static_cast<int>(title.size()) + 1);
  return title;
}

bool IsKeyDown(int key) { return (GetAsyncKeyState(key) & 0x8000) != 0; }

}  // namespace

ProfileDataDialog::ProfileDataDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow,
                                     const PageTraits& traits)
    : PropPageDialog(instance, templateId, parentWindow), traits_(traits) {}

int ProfileDataDialog::OnInitDialog(int64_t) {
  profileCombo = GetDlgItem(GetWindow(), IDC_PROFILE_COMBO);
  overrideCheck = GetDlgItem(GetWindow(), IDC_OVERRIDE_CHECK);
  selector_.Attach(profileCombo);
  return 1;
}

int ProfileDataDialog::SetWindowControls() {
  if (profileCombo == nullptr) return 1;  // the page is still being created
  selector_.Show(GetContext().profiles, GetContext().currentProfile);
  return 1;
}

void ProfileDataDialog::SelectProfileFromCombo(HWND combo) {
  LoginPropertiesContext& context = GetContext();
  const auto id = static_cast<uint32_t>(ComboBox_GetItemData(combo, ComboBox_GetCurSel(combo)));
  if (auto profile = FindProfile(context.profiles, id)) {
    SheetLog::ProfileSelected(profile);
    context.currentProfile = std::move(profile);
  }
}

bool ProfileDataDialog::IsOverrideDisabled(const wchar_t* pageName) {
  const DWORD policy = ReadRegistryDword(HKEY_LOCAL_MACHINE, PolicyKeyOf(pageName), kDisableOverrideValue, 0);
  return PolicyHolds(policy, IsKeyDown(VK_SHIFT), IsKeyDown(VK_CONTROL));
}

bool ProfileDataDialog::ApplyOverridePolicy() {
  if (!IsOverrideDisabled(traits_.policyName)) return false;
  if (const auto& profile = GetContext().currentProfile) {
    SheetLog::ResetByPolicy(TitleOf(GetWindow()), profile);
    traits_.followDefaults(*profile, true);
  }
  return true;
}

bool ProfileDataDialog::IsUnderDialog() const {
  const HWND sheet = GetParent(GetWindow());
  return sheet != nullptr && IsWindowEnabled(sheet) == FALSE;
}

bool ProfileDataDialog::FollowsDefaults() const {
  const auto& profile = GetContext().currentProfile;
  return !profile || traits_.followsDefaults(*profile);
}

void ProfileDataDialog::ShowOverride() {
  const bool overrides = !FollowsDefaults();
  CheckControl(GetWindow(), IDC_OVERRIDE_CHECK, overrides);
  EnableControlsAfterOverride(GetWindow(), overrides);
}

int ProfileDataDialog::OnCommand(uint64_t command, int64_t) {
  switch (LOWORD(command)) {
    case IDC_PROFILE_COMBO:
      return HIWORD(command) == CBN_SELCHANGE ? OnProfileChosen() : traits_.idleSelectorResult;
    case IDC_OVERRIDE_CHECK:
      return traits_.followDefaults != nullptr ? OnOverrideClicked() : 0;
    default:
      return 0;
  }
}

int ProfileDataDialog::OnProfileChosen() {
  if (traits_.validatesBeforeSwitch && ValidateWindowControls() == 0) {
    ProfileDataDialog::SetWindowControls();  // the selector goes back to the current profile
    return 0;
  }
  SelectProfileFromCombo(profileCombo);
  SetWindowControls();
  return 1;
}

int ProfileDataDialog::OnOverrideClicked() {
  if (const auto& profile = GetContext().currentProfile) {
    const bool overrides = IsControlChecked(GetWindow(), IDC_OVERRIDE_CHECK);
    SheetLog::OverrideClicked(TitleOf(GetWindow()), profile, overrides);
    traits_.followDefaults(*profile, !overrides);
    profile->SetState(ChangeState::Changed);
  }
  SetWindowControls();
  return 1;
}

int ProfileDataDialog::OnNotify(uint64_t, int64_t record) {
  switch (reinterpret_cast<const NMHDR*>(record)->code) {
    case PSN_SETACTIVE:
      SheetLog::PageShown(TitleOf(GetWindow()), GetContext().currentProfile);
      SetWindowControls();
      return 0;
    case PSN_KILLACTIVE:
      if (ValidateWindowControls() != 0) return 0;
      SheetLog::PageRefused(TitleOf(GetWindow()));
      return 1;
    case PSN_HELP:
      OpenHelp(traits_.ownsHelpOfButton);
      return 0;
    default:
      return 0;
  }
}

int ProfileDataDialog::OnHelp(int64_t) {
  OpenHelp(traits_.ownsHelpOfKey);
  return 1;
}

void ProfileDataDialog::OpenHelp(bool ownsIt) const {
  constexpr uint32_t kCommand = 15;
  DisplayHelp(traits_.helpTopic, ownsIt ? GetWindow() : nullptr, kCommand);
}

std::shared_ptr<ConfigSetting> ProfileDataDialog::GetCurrentAutoConfig() {
  LoginPropertiesContext& context = GetContext();
  if (!context.currentProfile) return nullptr;
  return FindOrLoadConfig(context.autoConfigs, context.currentProfile->GetProfileId(), LoadAutoConfig);
}

std::shared_ptr<ConfigSetting> ProfileDataDialog::GetCurrentManualConfig() {
  LoginPropertiesContext& context = GetContext();
  if (!context.currentProfile) return nullptr;
  return FindOrLoadConfig(context.manualConfigs, context.currentProfile->GetProfileId(), LoadManualConfig);
}
