#include "LoginProperties/WiFiSwitching/AutoReconnectDialog.h"

#include <windowsx.h>

#include <array>

#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/WiFiSwitching/AutoReconnectControls.h"
#include "LoginProperties/WiFiSwitching/AutoReconnectRules.h"
#include "LoginProperties/WiFiSwitching/AutoReconnectStrings.h"
#include "LoginProperties/WiFiSwitching/FocusFrame.h"
#include "WaylineDll/Messages.h"

namespace {

constexpr size_t kLongestText = 260;

constexpr PageTraits kTraits = {
    .helpTopic = 1132,
    .idleSelectorResult = 1,
    .followDefaults = [](Profile& profile, bool follow) { profile.SetOverrideAutoReconnectDefaults(!follow); },
};

// What every profile can have, whoever sets the rest.
constexpr std::array kAlwaysEnabled = {IDC_RECONNECT_SWITCH_GROUP,   IDC_RECONNECT_HOTSPOT_GROUP,
                                       IDC_RECONNECT_PROMPT_LABEL,   IDC_RECONNECT_INTERVAL_LABEL,
                                       IDC_RECONNECT_STRENGTH_LABEL, IDC_RECONNECT_ADVANCED_GROUP,
                                       IDC_RECONNECT_WAIT_RADIO,     IDC_RECONNECT_AT_ONCE_RADIO};

}  // namespace

AutoReconnectDialog::AutoReconnectDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow)
    : ProfileDataDialog(instance, templateId, parentWindow, kTraits) {}

int AutoReconnectDialog::OnInitDialog(int64_t parameter) {
  Edit_LimitText(GetDlgItem(GetWindow(), IDC_RECONNECT_STRENGTH), kStrengthDigits);
  Edit_LimitText(GetDlgItem(GetWindow(), IDC_RECONNECT_INTERVAL), kIntervalDigits);
  ShowFocusOf(GetDlgItem(GetWindow(), IDC_RECONNECT_PROMPT_CHECK));
  return ProfileDataDialog::OnInitDialog(parameter);
}

int AutoReconnectDialog::SetWindowControls() {
  const auto& edited = GetContext().currentProfile;
  if (edited) {
    ShowReconnectValues(*edited);
    EnableControl(GetWindow(), IDC_OVERRIDE_CHECK, EnabledReconnectOf(*edited).overrides);
    for (const int id : kAlwaysEnabled) EnableControl(GetWindow(), id, true);
    EnableReconnectControls();
  } else {
    EnableControl(GetWindow(), IDC_OVERRIDE_CHECK, false);
    EnableControlsAfterOverride(GetWindow(), false);
  }
  return ProfileDataDialog::SetWindowControls();
}

void AutoReconnectDialog::ShowReconnectValues(const Profile& profile) {
  const ShownReconnect shown = ShownReconnectOf(profile);
  CheckControl(GetWindow(), IDC_OVERRIDE_CHECK, shown.overrides);
  CheckControl(GetWindow(), IDC_RECONNECT_SWITCH_CHECK, shown.automatic);
  CheckControl(GetWindow(), IDC_RECONNECT_HOTSPOT_CHECK, shown.hotspot);
  CheckControl(GetWindow(), IDC_RECONNECT_PROMPT_CHECK, shown.prompt);
  SetDlgItemTextW(GetWindow(), IDC_RECONNECT_INTERVAL, shown.interval.c_str());
  SetDlgItemTextW(GetWindow(), IDC_RECONNECT_STRENGTH, shown.strength.c_str());
  CheckRadioButton(GetWindow(), IDC_RECONNECT_AT_ONCE_RADIO, IDC_RECONNECT_WAIT_RADIO,
                   shown.atOnce ? IDC_RECONNECT_AT_ONCE_RADIO : IDC_RECONNECT_WAIT_RADIO);
}

// Counts as a change of the profile, also when the page only comes to the front.
void AutoReconnectDialog::EnableReconnectControls() {
  Profile& edited = *GetContext().currentProfile;
  edited.SetState(ChangeState::Changed);
  const EnabledReconnect enabled = EnabledReconnectOf(edited);
  EnableControl(GetWindow(), IDC_RECONNECT_SWITCH_CHECK, enabled.automatic);
  EnableControl(GetWindow(), IDC_RECONNECT_HOTSPOT_CHECK, enabled.hotspot);
  EnableControl(GetWindow(), IDC_RECONNECT_PROMPT_CHECK, enabled.details);
  EnableControl(GetWindow(), IDC_RECONNECT_INTERVAL, enabled.details);
  EnableControl(GetWindow(), IDC_RECONNECT_STRENGTH, enabled.details);
}

int AutoReconnectDialog::OnCommand(uint64_t command, int64_t control) {
  const int id = LOWORD(command);
  const int notification = HIWORD(command);
  if (!GetContext().currentProfile && id != IDC_PROFILE_COMBO) return 1;
  switch (id) {
    case IDC_OVERRIDE_CHECK:
      StoreFields();
      return ProfileDataDialog::OnCommand(command, control);
    case IDC_PROFILE_COMBO:
      return ProfileDataDialog::OnCommand(command, control);
    case IDC_RECONNECT_SWITCH_CHECK:
      return OnSwitchClicked(id, &Profile::SetOverrideARMode);
    case IDC_RECONNECT_HOTSPOT_CHECK:
      return OnSwitchClicked(id, &Profile::SetOverrideASWiFiMode);
    case IDC_RECONNECT_PROMPT_CHECK:
      return OnPromptClicked();
    case IDC_RECONNECT_INTERVAL:
    case IDC_RECONNECT_STRENGTH:
      return notification == EN_KILLFOCUS ? OnFieldLeft(id) : 1;
    case IDC_RECONNECT_AT_ONCE_RADIO:
      return OnLostConnectionChosen(id, kReconnectAtOnce);
    case IDC_RECONNECT_WAIT_RADIO:
      return OnLostConnectionChosen(id, kWaitForVpnTimeout);
    default:
      return 1;
  }
}

int AutoReconnectDialog::OnSwitchClicked(int id, void (Profile::*store)(bool)) {
  // Showing the values anew writes over what is typed.
  StoreFields();
  Profile& edited = *GetContext().currentProfile;
  (edited.*store)(IsControlChecked(GetWindow(), id));
  ShowReconnectValues(edited);
  EnableReconnectControls();
  return 1;
}

int AutoReconnectDialog::OnPromptClicked() {
  Profile& edited = *GetContext().currentProfile;
  edited.SetState(ChangeState::Changed);
  edited.SetOverridePromptUserToSwitch(IsControlChecked(GetWindow(), IDC_RECONNECT_PROMPT_CHECK));
  EnableControl(GetWindow(), IDC_RECONNECT_PROMPT_CHECK, true);
  return 1;
}

int AutoReconnectDialog::OnFieldLeft(int id) {
  const HWND sheet = GetParent(GetWindow());
  const HWND next = GetFocus();
  // To tell of a wrong number would take the focus back, and the click on Cancel with it.
  if (cancelled_ || next == GetDlgItem(sheet, IDCANCEL)) return 1;
  GetContext().currentProfile->SetState(ChangeState::Changed);
  StoreFields();
  // A click on a tab is followed by the sheet's own question, and one message is enough.
  const int result = leaving_ || next == PropSheet_GetTabControl(sheet) ? 1 : ValidateWindowControls();
  // The message took the release of the mouse button. What was clicked would wait for it, and get the click on Cancel.
  if (result == 0) PostMessageW(next, WM_CANCELMODE, 0, 0);
  EnableControl(GetWindow(), id, true);
  return result;
}

void AutoReconnectDialog::StoreFields() {
  StoreTyped(ControlText(GetWindow(), IDC_RECONNECT_INTERVAL, kLongestText),
             ControlText(GetWindow(), IDC_RECONNECT_STRENGTH, kLongestText), *GetContext().currentProfile);
}

int AutoReconnectDialog::OnLostConnectionChosen(int id, int32_t settings) {
  Profile& edited = *GetContext().currentProfile;
  edited.SetState(ChangeState::Changed);
  edited.SetAdvancedAutoReconnectSettings(settings);
  EnableControl(GetWindow(), id, true);
  return 1;
}

int AutoReconnectDialog::OnNotify(uint64_t controlId, int64_t record) {
  const UINT code = reinterpret_cast<const NMHDR*>(record)->code;
  if (code == PSN_KILLACTIVE) leaving_ = true;
  if (code == PSN_RESET) cancelled_ = true;
  return ProfileDataDialog::OnNotify(controlId, record);
}

// Every control writes the profile when it is used or left.
int AutoReconnectDialog::ReadWindowControls() { return 1; }

int AutoReconnectDialog::ValidateWindowControls() {
  const auto& edited = GetContext().currentProfile;
  if (!edited) return 1;
  StoreFields();
  if (IsStrengthAllowed(*edited)) return 1;
  // The focus passes the other field on its way through the message and back; nobody leaves that one.
  leaving_ = true;
  DisplayError(GetWindow(), ModuleId::LoginProperties, IDS_SIGNAL_STRENGTH_RANGE, {}, {}, {});
  SetFocus(GetDlgItem(GetWindow(), IDC_RECONNECT_STRENGTH));
  leaving_ = false;
  return 0;
}
