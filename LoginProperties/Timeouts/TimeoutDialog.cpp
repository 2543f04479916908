#include "LoginProperties/Timeouts/TimeoutDialog.h"

#include <windowsx.h>

#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Timeouts/TimeoutControls.h"
#include "LoginProperties/Timeouts/TimeoutStrings.h"
#include "NetUtilities/Log.h"
#include "WaylineDll/ActiveProfile.h"
#include "WaylineDll/Help.h"
#include "WaylineDll/Messages.h"
#include "WaylineDll/StringDb.h"

namespace {

constexpr int64_t kLargestDuration = 2147483647;
constexpr unsigned kNoLimitString = 12066;  // the client library's words for an inactivity limit that is not set

constexpr wchar_t kPolicyName[] = L"Timeouts";

constexpr PageTraits kTraits = {
    .helpTopic = 1036,
    .policyName = kPolicyName,
    .followsDefaults = [](const Profile& profile) { return profile.GetDefaultTimeouts(); },
    .followDefaults = [](Profile& profile, bool follow) { profile.SetDefaultTimeouts(follow); },
};

DurationUnits LoadDurationUnits() {
  return {OwnString(IDS_HOUR),    OwnString(IDS_HOURS),  OwnString(IDS_MINUTE),
          OwnString(IDS_MINUTES), OwnString(IDS_SECOND), OwnString(IDS_SECONDS)};
}

ByteUnits LoadByteUnits() {
  return {OwnString(IDS_BYTE),   OwnString(IDS_BYTES), OwnString(IDS_KBYTE),
          OwnString(IDS_KBYTES), OwnString(IDS_MBYTE), OwnString(IDS_MBYTES)};
}

void FillList(HWND list, const std::vector<Preset>& presets) {
  ComboBox_ResetContent(list);
  for (const Preset& preset : presets) {
    const int index = ComboBox_AddString(list, preset.text.c_str());
    ComboBox_SetItemData(list, index, preset.value);
  }
}

void SelectComboByValue(HWND list, int64_t value) {
  std::vector<uint32_t> items(static_cast<size_t>(ComboBox_GetCount(list)));
  for (size_t index = 0; index < items.size(); ++index) {
    items[index] = static_cast<uint32_t>(ComboBox_GetItemData(list, index));
  }
  ComboBox_SetCurSel(list, IndexForValue(items, value));
}

std::optional<uint32_t> SelectedValue(HWND list) {
  const int index = ComboBox_GetCurSel(list);
  if (index == CB_ERR) return std::nullopt;
  return static_cast<uint32_t>(ComboBox_GetItemData(list, index));
}

bool IsChecked(HWND check) { return Button_GetCheck(check) != BST_UNCHECKED; }

void SetChecked(HWND check, bool checked) { Button_SetCheck(check, checked ? BST_CHECKED : BST_UNCHECKED); }

// What the active connection says of its inactivity limit. No control shows it; support staff find it in the log.
void LogInactivityLimit(const Profile& edited, const DurationUnits& units) {
  Duration reported{};
  GetActiveProfileTimeouts2(nullptr, &reported, nullptr);
  const InactivityWords words = {OwnString(IDS_INACTIVITY_UNKNOWN), OwnString(IDS_INACTIVITY_UNLIMITED),
                                 LoadStringDb(ModuleId::ClientLibrary, kNoLimitString, false)};
  const auto limit = InactivityLimitText(reported.count(), edited.GetSMIdleTime().count(), words, units);
  Log(LogLevel::Detail, limit ? LoadStringWithSubS(ModuleId::LoginProperties, IDS_INACTIVITY_LIMIT, false, {*limit})
                              : OwnString(IDS_INACTIVITY_NEXT_CONNECTION));
}

}  // namespace

TimeoutDialog::TimeoutDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow)
    : ProfileDataDialog(instance, templateId, parentWindow, kTraits) {}

int TimeoutDialog::OnInitDialog(int64_t parameter) {
  warningList_ = GetDlgItem(GetWindow(), IDC_TIMEOUT_WARNING);
  durationList_ = GetDlgItem(GetWindow(), IDC_TIMEOUT_DURATION);
  periodList_ = GetDlgItem(GetWindow(), IDC_TIMEOUT_PERIOD);
  bytesList_ = GetDlgItem(GetWindow(), IDC_TIMEOUT_BYTES);
  warningCheck_ = GetDlgItem(GetWindow(), IDC_TIMEOUT_WARNING_CHECK);
  durationCheck_ = GetDlgItem(GetWindow(), IDC_TIMEOUT_DURATION_CHECK);
  thresholdCheck_ = GetDlgItem(GetWindow(), IDC_TIMEOUT_THRESHOLD_CHECK);
  if (ApplyOverridePolicy()) EnableControl(GetWindow(), IDC_OVERRIDE_CHECK, true);
  SetWindowControls();
  return ProfileDataDialog::OnInitDialog(parameter);
}

int TimeoutDialog::SetWindowControls() {
  LoginPropertiesContext& context = GetContext();
  const auto& edited = context.currentProfile;
  const bool overrides = !FollowsDefaults();
  EnableControlsAfterOverride(GetWindow(), overrides);
  if (overrides) {
    LoadTimeoutControls(*edited);
    EnableWarningGroup();
    EnableDurationGroup();
    EnableThresholdGroup();
  } else if (edited) {
    const auto linked = FindLinkedDefault(context.linkedDefaultProfile, context.profiles, edited->GetLinkProfile());
    // A copy, because another profile is only looked at. One whose parent is not known shows what a new profile holds.
    Profile shown = linked ? *linked : Profile(0);
    LoadTimeoutControls(shown);
  }
  return ProfileDataDialog::SetWindowControls();
}

void TimeoutDialog::LoadTimeoutControls(Profile& shown) {
  FillLists(*GetContext().currentProfile);
  const ShownTimeouts values = PrepareTimeouts(shown);
  SetChecked(GetDlgItem(GetWindow(), IDC_OVERRIDE_CHECK), values.overrides);
  SetChecked(warningCheck_, values.warningOn);
  SetChecked(durationCheck_, values.durationOn);
  SetChecked(thresholdCheck_, values.thresholdOn);
  SelectComboByValue(warningList_, values.warning);
  SelectComboByValue(durationList_, values.duration);
  SelectComboByValue(periodList_, values.thresholdPeriod);
  SelectComboByValue(bytesList_, values.thresholdBytes);
}

void TimeoutDialog::FillLists(const Profile& edited) {
  const DurationUnits units = LoadDurationUnits();
  const PresetLimits limits = LimitsOf(edited);
  FillList(durationList_, DurationPresets(OwnString(IDS_DURATION_PRESETS), limits.longestDuration, units));
  FillList(warningList_, DurationPresets(OwnString(IDS_WARNING_PRESETS), limits.longestWarning, units));
  FillList(periodList_, DurationPresets(OwnString(IDS_THRESHOLD_PERIOD_PRESETS), limits.longestPeriod, units));
  FillList(bytesList_, BytePresets(OwnString(IDS_THRESHOLD_BYTES_PRESETS), limits.fewestBytes, LoadByteUnits()));
  LogInactivityLimit(edited, units);
}

void TimeoutDialog::EnableTimeoutGroup(HWND list, HWND check, int64_t value, int labelId) {
  GetContext().currentProfile->SetState(ChangeState::Changed);
  const bool enable = IsChecked(check);
  if (enable && !SelectedValue(list)) SelectComboByValue(list, value);
  EnableControl(GetWindow(), labelId, enable);
  EnableWindow(list, enable);
}

void TimeoutDialog::EnableDurationGroup() {
  EnableTimeoutGroup(durationList_, durationCheck_, kLargestDuration, IDC_TIMEOUT_DURATION_LABEL);
}

void TimeoutDialog::EnableThresholdGroup() {
  const Profile& edited = *GetContext().currentProfile;
  // One box governs both lists and both labels, so that it does not matter which label goes with which list.
  EnableTimeoutGroup(periodList_, thresholdCheck_, edited.GetThresholdTimeOut().count(), IDC_TIMEOUT_BYTES_LABEL);
  EnableTimeoutGroup(bytesList_, thresholdCheck_, edited.GetThresholdBytes(), IDC_TIMEOUT_PERIOD_LABEL);
}

void TimeoutDialog::EnableWarningGroup() {
  EnableTimeoutGroup(warningList_, warningCheck_, GetContext().currentProfile->GetWarnTime().count(),
                     IDC_TIMEOUT_WARNING_LABEL);
}

int TimeoutDialog::OnCommand(uint64_t command, int64_t control) {
  const int id = LOWORD(command);
  const auto& edited = GetContext().currentProfile;
  if (!edited && id != IDC_PROFILE_COMBO) return 0;
  switch (id) {
    case IDC_TIMEOUT_DURATION_CHECK:
      EnableDurationGroup();
      return 0;
    case IDC_TIMEOUT_WARNING_CHECK:
      EnableWarningGroup();
      return 0;
    case IDC_TIMEOUT_THRESHOLD_CHECK:
      OnThresholdClicked();
      return 0;
    case IDC_TIMEOUT_WARNING:
    case IDC_TIMEOUT_DURATION:
    case IDC_TIMEOUT_BYTES:
    case IDC_TIMEOUT_PERIOD:
      if (HIWORD(command) == CBN_SELCHANGE) edited->SetState(ChangeState::Changed);
      return 0;
    default:
      return ProfileDataDialog::OnCommand(command, control);
  }
}

void TimeoutDialog::OnThresholdClicked() {
  EnableThresholdGroup();
  Profile& edited = *GetContext().currentProfile;
  edited.SetState(ChangeState::Changed);
  edited.SetThresholdOnOff(IsChecked(thresholdCheck_));
}

// The page writes the profile when it validates.
int TimeoutDialog::ReadWindowControls() { return 1; }

int TimeoutDialog::ValidateWindowControls() {
  if (!GetContext().currentProfile || !IsControlChecked(GetWindow(), IDC_OVERRIDE_CHECK)) return 1;
  const auto problem = StoreTimeouts(ReadChoices(), *GetContext().currentProfile);
  if (!problem) return 1;
  ShowProblem(*problem);
  return 0;
}

ChosenTimeouts TimeoutDialog::ReadChoices() const {
  return {
      .durationOn = IsChecked(durationCheck_),
      .duration = SelectedValue(durationList_),
      .thresholdOn = IsChecked(thresholdCheck_),
      .thresholdBytes = SelectedValue(bytesList_),
      .thresholdPeriod = SelectedValue(periodList_),
      .warningOn = IsChecked(warningCheck_),
      .warning = SelectedValue(warningList_),
  };
}

void TimeoutDialog::ShowProblem(const TimeoutProblem& problem) {
  const bool missing = problem.kind == TimeoutProblem::Kind::ValueMissing;
  DisplayError(GetWindow(), ModuleId::LoginProperties, missing ? IDS_TIMEOUT_VALUE_MISSING : IDS_WARNING_TIME_TOO_LONG,
               {}, {}, {});
  const auto listOf = [this](TimeoutList list) {
    switch (list) {
      case TimeoutList::Duration:
        return durationList_;
      case TimeoutList::ThresholdBytes:
        return bytesList_;
      case TimeoutList::ThresholdPeriod:
        return periodList_;
      case TimeoutList::Warning:
        break;
    }
    return warningList_;
  };
  SetFocus(listOf(problem.list));
}
