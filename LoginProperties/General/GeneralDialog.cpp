#include "LoginProperties/General/GeneralDialog.h"

#include <commctrl.h>

#include <filesystem>
#include <string>
#include <utility>

#include "Database/Profiles/ServiceInfo.h"
#include "LoginProperties/General/GeneralControls.h"
#include "LoginProperties/General/GeneralRules.h"
#include "LoginProperties/General/GeneralStrings.h"
#include "LoginProperties/General/RenameProfile.h"
#include "LoginProperties/General/RenameProfileControls.h"
#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/ProfilePage/ConfigCache.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/SheetLog.h"
#include "NetUtilities/Files/WinLogonDesktop.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Text/ErrorText.h"
#include "WaylineDll/ActiveProfile.h"
#include "WaylineDll/Appearance.h"
#include "WaylineDll/AutoStart.h"
#include "WaylineDll/Bookmarks.h"
#include "WaylineDll/Connection.h"
#include "WaylineDll/Help.h"
#include "WaylineDll/Messages.h"
#include "WaylineDll/NewProfile.h"
#include "WaylineDll/Preferences.h"
#include "WaylineDll/ProxyConfigs.h"
#include "WaylineDll/StringDb.h"

namespace {

constexpr PageTraits kTraits = {
    .helpTopic = 1031,
    .ownsHelpOfKey = true,
    .ownsHelpOfButton = false,
    .idleSelectorResult = 1,
};

// Shows what belongs to the profile in dark blue.
LRESULT CALLBACK ColourValues(HWND page, UINT message, WPARAM device, LPARAM control, UINT_PTR id, DWORD_PTR) {
  constexpr COLORREF kDarkBlue = 0xC00000;
  switch (message) {
    case WM_CTLCOLORSTATIC:
      switch (GetDlgCtrlID(reinterpret_cast<HWND>(control))) {
        case IDC_GENERAL_ACCOUNT:
        case IDC_GENERAL_USER_ID:
        case IDC_GENERAL_SERVICE:
          SetTextColor(reinterpret_cast<HDC>(device), kDarkBlue);
          SetBkMode(reinterpret_cast<HDC>(device), TRANSPARENT);
          return reinterpret_cast<LRESULT>(GetStockObject(NULL_BRUSH));
        default:
          break;
      }
      break;
    case WM_NCDESTROY:
      RemoveWindowSubclass(page, ColourValues, id);
      break;
    default:
      break;
  }
  return DefSubclassProc(page, message, device, control);
}

// Keeps the sheet open under a wizard or a question, whose answer would be lost with it. On the log-on desktop it also
// asks for help by itself, whichever page is in front.
LRESULT CALLBACK GuardSheet(HWND sheet, UINT message, WPARAM wordParameter, LPARAM longParameter, UINT_PTR id,
                            DWORD_PTR opensHelp) {
  constexpr uint32_t kCommand = 15;
  switch (message) {
    case WM_CLOSE:
      if (IsWindowEnabled(sheet) == FALSE) return 0;
      break;
    case WM_HELP:
      if (opensHelp == 0) break;
      DisplayHelp(kTraits.helpTopic, sheet, kCommand);
      return TRUE;
    case WM_NCDESTROY:
      RemoveWindowSubclass(sheet, GuardSheet, id);
      break;
    default:
      break;
  }
  return DefSubclassProc(sheet, message, wordParameter, longParameter);
}

// The network service of a profile; one that cannot be found has no text.
std::shared_ptr<ServiceInfo> ServiceOf(const Profile& profile) {
  auto service = std::make_shared<ServiceInfo>();
  try {
    service->Load(static_cast<uint32_t>(profile.GetLinkService()));
  } catch (const std::filesystem::filesystem_error& error) {
    Log(LogLevel::Error, L"The network services cannot be looked for" + ErrorSuffix(error.code()));
  }
  return service;
}

}  // namespace

GeneralDialog::GeneralDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow)
    : ProfileDataDialog(instance, templateId, parentWindow, kTraits) {}

int GeneralDialog::OnInitDialog(int64_t parameter) {
  SetWindowSubclass(GetWindow(), ColourValues, 0, 0);
  // As the first page of the full sheet it is created before the sheet is seen.
  const HWND sheet = GetParent(GetWindow());
  RemoveContextHelpButton(sheet);
  CenterWindow(sheet, nullptr);
  ProfileDataDialog::OnInitDialog(parameter);
  bool showServers = false;
  BookmarkGetBool(Bookmark::Index::ShowServerSettings, showServers);
  if (!showServers) {
    for (const int id : {IDC_GENERAL_CONFIGURE_SERVERS, IDC_GENERAL_SERVERS_HINT, IDC_GENERAL_SERVERS_GROUP,
                         IDC_GENERAL_SERVERS_ICON}) {
      HideControl(GetWindow(), id);
    }
  }
  SetWindowSubclass(sheet, GuardSheet, 0, IsRunningInWinLogonDesktop() ? 1 : 0);
  return 1;
}

int GeneralDialog::SetWindowControls() {
  ProfileDataDialog::SetWindowControls();
  const auto& profile = GetContext().currentProfile;
  if (!profile) return 1;
  SetControlTextHidden(GetWindow(), IDC_GENERAL_ACCOUNT, profile->GetAccount());
  SetControlTextHidden(GetWindow(), IDC_GENERAL_USER_ID, profile->GetUserId());
  SetControlTextHidden(GetWindow(), IDC_GENERAL_SERVICE, ServiceOf(*profile)->GetDisplayText());
  return 1;
}

int GeneralDialog::OnCommand(uint64_t command, int64_t control) {
  if (IsUnderDialog()) return 1;
  const bool isClick = HIWORD(command) == BN_CLICKED;
  switch (LOWORD(command)) {
    case IDC_GENERAL_RENAME:
      if (isClick) Rename();
      return 1;
    case IDC_GENERAL_REMOVE:
      Remove();
      return 1;
    case IDC_GENERAL_CONFIGURE_NETWORK:
      if (isClick) ConfigureNetwork();
      return 1;
    case IDC_GENERAL_CONFIGURE_SERVERS:
      if (isClick) ConfigureServers();
      return 1;
    case IDC_GENERAL_NEW:
      if (isClick) AddNew();
      return 1;
    default:
      return ProfileDataDialog::OnCommand(command, control);
  }
}

void GeneralDialog::Rename() {
  const auto profile = GetContext().currentProfile;
  if (!profile) return;
  RenameProfile dialog(GetResourceHandle(ModuleId::LoginProperties), MAKEINTRESOURCEW(IDD_RENAME_PROFILE), GetWindow(),
                       profile->GetName());
  if (dialog.DoModal() != IDOK) return;
  SheetLog::ProfileRenamed(profile, dialog.GetNewName());
  profile->SetName(dialog.GetNewName());
  profile->SetState(ChangeState::Renamed);
  SetWindowControls();
}

void GeneralDialog::Remove() {
  const LoginPropertiesContext& context = GetContext();
  const auto profile = context.currentProfile;
  if (!profile) return;
  const auto refuse = [&](unsigned text, const std::wstring& followers = {}) {
    SheetLog::RemovalRefused(profile);
    DisplayError(GetWindow(), ModuleId::LoginProperties, text, profile->GetName(), followers, {});
  };
  switch (RefuseRemoval(context.profiles, *profile, GetActiveProfileIdExoprt(), IsConnected() != 0)) {
    case RemovalRefusal::LastProfile:
      return refuse(IDS_CANNOT_REMOVE_LAST_PROFILE);
    case RemovalRefusal::NotListed:
      return;
    case RemovalRefusal::Connected:
      return refuse(IDS_CANNOT_REMOVE_CONNECTED_PROFILE);
    case RemovalRefusal::Followed:
      return refuse(IDS_CANNOT_REMOVE_FOLLOWED_PROFILE, NamesOfFollowers(context.profiles, profile->GetProfileId()));
    case RemovalRefusal::None:
      break;
  }
  if (AskYesNo(GetWindow(), ModuleId::LoginProperties, IDS_CONFIRM_REMOVE_PROFILE, profile->GetName(), {}) != 0) {
    SheetLog::ProfileRemoved(profile);
    if (auto next = RemoveProfile(context.profiles, *profile)) GetContext().currentProfile = std::move(next);
  }
  SetWindowControls();
}

void GeneralDialog::ConfigureNetwork() {
  const auto profile = GetContext().currentProfile;
  if (!profile) return;
  const auto edited = std::make_shared<Profile>(*profile);
  SetupWizardData_t data = {
      .profile = edited, .profiles = GetContext().profiles, .service = ServiceOf(*profile), .manualConfig = nullptr};
  if (!RunWizard(WizardId::UserIdAndService, data)) return;
  SheetLog::NetworkConfigured(profile);
  TakeUserIdAndService(*edited, *profile);
  SetWindowControls();
}

void GeneralDialog::ConfigureServers() {
  const auto profile = GetContext().currentProfile;
  if (!profile) return;
  const auto config = GetCurrentManualConfig();
  SetupWizardData_t data = {
      .profile = profile, .profiles = GetContext().profiles, .service = ServiceOf(*profile), .manualConfig = config};
  if (!RunWizard(WizardId::Servers, data)) return;
  SheetLog::ServersConfigured(profile);
  if (config) config->SetState(ChangeState::Changed);
  profile->SetState(ChangeState::Changed);
  SetWindowControls();
}

void GeneralDialog::AddNew() {
  LoginPropertiesContext& context = GetContext();
  const auto profile = CreateNewProfile();
  SetupWizardData_t data = {
      .profile = profile, .profiles = context.profiles, .service = nullptr, .manualConfig = nullptr};
  if (profile) {  // otherwise the wizard says why there is none
    data.service = ServiceOf(*profile);
    data.manualConfig = FindOrLoadConfig(context.manualConfigs, profile->GetProfileId(), LoadManualConfig);
  }
  if (!RunWizard(WizardId::NewProfile, data)) return;
  if (data.manualConfig) data.manualConfig->SetState(ChangeState::Changed);
  profile->SetState(ChangeState::New);
  const uint32_t id = profile->GetProfileId();
  context.profiles[id] = profile;
  context.currentProfile = profile;
  SheetLog::ProfileCreated(profile, data.copySettings ? data.copySourceProfileId : 0);
  // The library has made the copies, and hands them out from now on.
  if (data.copySettings) {
    PreferenceTable preferences;
    GetUserPreferences(id, preferences);
    for (auto& [preferenceId, copy] : preferences) context.preferences[preferenceId] = std::move(copy);
    AutoStartTable items;
    LoadUserAutoStart(data.copySourceProfileId, items);
    CopyUserAutoStart(id, items, context.autoStartItems);
  }
  SetWindowControls();
}

bool GeneralDialog::RunWizard(WizardId wizard, SetupWizardData_t& data) const {
  constexpr int64_t kFinished = 1;
  return SetupWizardTether().ShowAsSecondaryWindow(GetWindow(), wizard, &data) == kFinished;
}
