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
#include "WaylineDll/Messages.h"
#include "WaylineDll/Records.h"

namespace {

// The title of its tab.
std::wstring TitleOf(HWND page) {
  std::wstring title(static_cast<size_t>(GetWindowTextLengthW(page)), L'\0');
  GetWindowTextW(page, title.data(), static_cast<int>(title.size()) + 1);
  return title;
}

bool IsKeyDown(int key) { return (GetAsyncKeyState(key) & 0x8000) != 0; }

}  // namespace

int ProfileDataDialog::OnInitDialog(int64_t) {
  profileCombo = GetDlgItem(GetWindow(), IDC_PROFILE_COMBO);
  overrideCheck = GetDlgItem(GetWindow(), IDC_OVERRIDE_CHECK);
  return 1;
}

int ProfileDataDialog::SetWindowControls() {
  if (profileCombo == nullptr) return 1;  // the page is still being created
  const LoginPropertiesContext& context = GetContext();
  SetWindowRedraw(profileCombo, FALSE);
  ComboBox_ResetContent(profileCombo);
  for (const SelectableProfile& profile : SelectableProfiles(context.profiles)) {
    const int index = ComboBox_AddString(profileCombo, profile.name.c_str());
    ComboBox_SetItemData(profileCombo, index, profile.id);
  }
  if (context.currentProfile) {
    ComboBox_SelectString(profileCombo, -1, context.currentProfile->GetName().c_str());
  }
  SetWindowRedraw(profileCombo, TRUE);
  InvalidateRect(profileCombo, nullptr, TRUE);
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

bool ProfileDataDialog::ApplyOverridePolicy(const wchar_t* pageName, SetFlag followDefaults) {
  if (!IsOverrideDisabled(pageName)) return false;
  if (const auto& profile = GetContext().currentProfile) {
    SheetLog::ResetByPolicy(TitleOf(GetWindow()), profile);
    followDefaults(*profile, true);
  }
  EnableControl(GetWindow(), IDC_OVERRIDE_CHECK, true);
  return true;
}

void ProfileDataDialog::ShowOverride(bool followsDefaults) {
  CheckControl(GetWindow(), IDC_OVERRIDE_CHECK, !followsDefaults);
  EnableControlsAfterOverride(GetWindow(), !followsDefaults);
}

int ProfileDataDialog::OnOverrideClicked(SetFlag followDefaults) {
  if (const auto& profile = GetContext().currentProfile) {
    const bool overrides = IsControlChecked(GetWindow(), IDC_OVERRIDE_CHECK);
    SheetLog::OverrideClicked(TitleOf(GetWindow()), profile, overrides);
    followDefaults(*profile, !overrides);
    profile->SetState(ChangeState::Changed);
  }
  SetWindowControls();
  return 1;
}

int ProfileDataDialog::OnProfileSelected() {
  SelectProfileFromCombo(profileCombo);
  SetWindowControls();
  return 1;
}

int ProfileDataDialog::OnSheetNotification(int64_t record, uint32_t helpTopic, HWND helpParent) {
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
      DisplayHelp(helpTopic, helpParent, kHelpCommand);
      return 0;
    default:
      return 0;
  }
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
