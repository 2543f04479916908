#include "LoginProperties/Proxy/ProxyDialog.h"

#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Proxy/ProxyControls.h"
#include "LoginProperties/Proxy/ProxyStrings.h"
#include "LoginProperties/Proxy/SettingsControls.h"
#include "LoginProperties/Proxy/SettingsDialog.h"
#include "WaylineDll/StringDb.h"

namespace {

constexpr wchar_t kPolicyName[] = L"Proxy";

constexpr PageTraits kTraits = {
    .helpTopic = 1050,
    .validatesBeforeSwitch = false,
    .policyName = kPolicyName,
    .followsDefaults = [](const Profile& profile) { return profile.GetDefaultProxy(); },
    .followDefaults = [](Profile& profile, bool follow) { profile.SetDefaultProxy(follow); },
};

// The columns of the list.
constexpr int kTypeColumn = 0;
constexpr int kSettingColumn = 1;
constexpr int kValueColumn = 2;

// What can be changed, beside the list, by a profile that does not follow the defaults. Explanation and frame are
// always enabled.
constexpr int kGoverned[] = {
    IDC_PROXY_AUTOMATIC_RADIO, IDC_PROXY_NOT_UPDATED_RADIO, IDC_PROXY_MANUAL_RADIO, IDC_PROXY_URL_LABEL, IDC_PROXY_URL,
    IDC_PROXY_SETTINGS};

}  // namespace

ProxyDialog::ProxyDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow)
    : ProfileDataDialog(instance, templateId, parentWindow, kTraits) {}

int ProxyDialog::OnInitDialog(int64_t parameter) {
  RemoveContextHelpButton(GetParent(GetWindow()));
  ProfileDataDialog::OnInitDialog(parameter);
  if (ApplyOverridePolicy()) EnableControl(GetWindow(), IDC_OVERRIDE_CHECK, true);
  list_.Attach(GetDlgItem(GetWindow(), IDC_PROXY_LIST));
  AddColumns();
  for (const int title : {IDS_PROXY_AUTO_URL_ROW, IDS_PROXY_MANUAL_ROW, IDS_PROXY_EXCEPTIONS_ROW}) {
    list_.AddRow({OwnString(static_cast<unsigned>(title))});
  }
  list_.Select(0);
  return SetWindowControls();
}

void ProxyDialog::AddColumns() const {
  const int width = list_.Width();
  list_.AddColumn(OwnString(IDS_PROXY_COLUMN_TYPE), width / 4);
  list_.AddColumn(OwnString(IDS_PROXY_COLUMN_SETTING), width / 4);
  list_.AddColumn(OwnString(IDS_PROXY_COLUMN_VALUE), width / 2);
  constexpr int kBorders = 4;
  const int quarter = (width - kBorders) / 4;
  list_.SetHeaderWidth(kTypeColumn, quarter);
  list_.SetHeaderWidth(kSettingColumn, quarter);
  list_.SetHeaderWidth(kValueColumn, 2 * quarter);
}

int ProxyDialog::SetWindowControls() {
  ProfileDataDialog::SetWindowControls();
  const bool overrides = !FollowsDefaults();
  CheckControl(GetWindow(), IDC_OVERRIDE_CHECK, overrides);
  list_.Enable(overrides);
  for (const int id : kGoverned) EnableControl(GetWindow(), id, overrides);
  RestoreModes(overrides);
  FillList();
  ShowSetting();
  return 1;
}

// A profile that follows the defaults has the modes that it came with.
void ProxyDialog::RestoreModes(bool overrides) {
  const auto& profile = GetContext().currentProfile;
  if (!profile) return;
  const auto [first, isNew] = firstModes_.try_emplace(profile, ModesOf(*profile));
  if (!overrides) SetModes(*profile, first->second);
}

void ProxyDialog::FillList() const {
  const auto& profile = GetContext().currentProfile;
  if (!profile) return;
  for (const ProxySetting setting : kProxySettings) {
    const auto row = static_cast<size_t>(setting);
    const wchar_t mode = ModeOf(*profile, setting);
    list_.SetText(row, kSettingColumn, OwnString(ModeString(mode)));
    list_.SetText(row, kValueColumn, ShownValue(ConfigOf(mode), setting, OwnString(IDS_PROXY_LEAVE)));
  }
}

// The configuration that a mode takes its values from; null when it takes none, and where there is none.
std::shared_ptr<ConfigSetting> ProxyDialog::ConfigOf(wchar_t mode) {
  switch (mode) {
    case kUpdatedAutomatically:
      return GetCurrentAutoConfig();
    case kUpdatedManually:
      return GetCurrentManualConfig();
    default:
      return nullptr;
  }
}

wchar_t ProxyDialog::SelectedMode() const {
  const auto& profile = GetContext().currentProfile;
  return profile ? ModeOf(*profile, selected_) : L'\0';
}

void ProxyDialog::ShowSetting() const {
  const wchar_t mode = SelectedMode();
  CheckMode(mode);
  const bool canEnter = CanEnterValues(!FollowsDefaults(), mode);
  const bool isUrl = selected_ == ProxySetting::AutoUrl;
  for (const int id : {IDC_PROXY_URL_LABEL, IDC_PROXY_URL}) {
    isUrl ? ShowControl(GetWindow(), id) : HideControl(GetWindow(), id);
  }
  isUrl ? HideControl(GetWindow(), IDC_PROXY_SETTINGS) : ShowControl(GetWindow(), IDC_PROXY_SETTINGS);
  EnableControl(GetWindow(), isUrl ? IDC_PROXY_URL : IDC_PROXY_SETTINGS, canEnter);
  if (isUrl && TakesValues(mode)) {
    const auto config = ConfigOf(mode);
    SetDlgItemTextW(GetWindow(), IDC_PROXY_URL, config ? config->fields.autoProxyUrl.c_str() : L"");
  }
}

// A mode that none of the buttons stands for leaves them as they are.
void ProxyDialog::CheckMode(wchar_t mode) const {
  const auto check = [this](int id) {
    CheckRadioButton(GetWindow(), IDC_PROXY_AUTOMATIC_RADIO, IDC_PROXY_MANUAL_RADIO, id);
  };
  switch (mode) {
    case kUpdatedAutomatically:
      return check(IDC_PROXY_AUTOMATIC_RADIO);
    case kNotUpdated:
      return check(IDC_PROXY_NOT_UPDATED_RADIO);
    case kUpdatedManually:
      return check(IDC_PROXY_MANUAL_RADIO);
    default:
      break;
  }
}

int ProxyDialog::OnCommand(uint64_t command, int64_t control) {
  switch (LOWORD(command)) {
    case IDC_PROXY_AUTOMATIC_RADIO:
    case IDC_PROXY_NOT_UPDATED_RADIO:
    case IDC_PROXY_MANUAL_RADIO:
      if (HIWORD(command) == BN_CLICKED) OnModeChosen();
      return 0;
    case IDC_PROXY_SETTINGS:
      EditList();
      return 0;
    default:
      return ProfileDataDialog::OnCommand(command, control);
  }
}

void ProxyDialog::OnModeChosen() {
  const auto& profile = GetContext().currentProfile;
  if (!profile) return;
  wchar_t mode = kUpdatedAutomatically;
  if (IsControlChecked(GetWindow(), IDC_PROXY_NOT_UPDATED_RADIO)) {
    mode = kNotUpdated;
  } else if (IsControlChecked(GetWindow(), IDC_PROXY_MANUAL_RADIO)) {
    mode = kUpdatedManually;
  }
  SetMode(*profile, selected_, mode);
  profile->SetState(ChangeState::Changed);
  SetWindowControls();
}

void ProxyDialog::EditList() {
  const auto config = GetCurrentManualConfig();
  if (!config) return;
  const bool manual = selected_ == ProxySetting::ManualProxy;
  std::wstring& text = TextOf(*config, manual ? ProxySetting::ManualProxy : ProxySetting::Exceptions);
  SettingsDialog dialog(GetResourceHandle(ModuleId::LoginProperties), MAKEINTRESOURCEW(IDD_PROXY_SETTINGS),
                        GetWindow());
  dialog.Load(text, manual);
  if (dialog.DoModal() != IDOK) return;
  text = dialog.Result();
  config->SetState(ChangeState::Changed);
  SetWindowControls();
}

int ProxyDialog::OnNotify(uint64_t controlId, int64_t record) {
  const NMHDR& notification = *reinterpret_cast<const NMHDR*>(record);
  if (notification.hwndFrom != list_.Window() || notification.code != static_cast<UINT>(LVN_ITEMCHANGED)) {
    return ProfileDataDialog::OnNotify(controlId, record);
  }
  if (const auto row = ReportList::SelectedRow(notification)) {
    selected_ = kProxySettings.at(*row);
    ShowSetting();
  }
  return 1;
}

// Every control writes the profile when it is used, but the URL's field.
int ProxyDialog::ReadWindowControls() { return 1; }

int ProxyDialog::ValidateWindowControls() {
  if (selected_ != ProxySetting::AutoUrl || SelectedMode() != kUpdatedManually) return 1;
  if (const auto config = GetCurrentManualConfig()) StoreAutoUrl(ControlText(GetWindow(), IDC_PROXY_URL), *config);
  return 1;
}
