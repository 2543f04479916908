#include "LoginProperties/Autostart/FileChoice.h"

#include <cderr.h>
#include <commdlg.h>

#include "LoginProperties/Autostart/AutostartStrings.h"
#include "LoginProperties/Autostart/BrowsedFile.h"
#include "LoginProperties/Autostart/LaunchPlatform.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Text/Format.h"
#include "WaylineDll/Messages.h"

namespace {

constexpr wchar_t kShellFolders[] = LR"(Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders)";
constexpr wchar_t kPrograms[] = L"Programs";

// The user's programs in the Start menu; empty when they are not known.
std::wstring StartMenuFolder() {
  RegistryKey key;
  std::wstring folder;
  if (key.Open(HKEY_CURRENT_USER, kShellFolders, KEY_READ) == ERROR_SUCCESS) key.ReadString(kPrograms, folder, L"");
  return folder;
}

// Puts the current folder of the process back, which the dialog changes to that of the chosen file.
class SameCurrentFolder {
 public:
  SameCurrentFolder() { GetCurrentDirectoryW(ARRAYSIZE(folder_), folder_); }
  ~SameCurrentFolder() { SetCurrentDirectoryW(folder_); }
  SameCurrentFolder(const SameCurrentFolder&) = delete;
  SameCurrentFolder& operator=(const SameCurrentFolder&) = delete;

 private:
  wchar_t folder_[MAX_PATH] = {};
};

// No error is that the user has chosen nothing.
void TellFailure(HWND owner, DWORD error) {
  if (error == FNERR_BUFFERTOOSMALL) {
    DisplayMessage(owner, ModuleId::LoginProperties, IDS_BROWSED_PATH_TOO_LONG, {}, {});
  } else if (error != 0) {
    DisplayMessage(owner, ModuleId::LoginProperties, IDS_BROWSE_FAILED, Format(L"{:#x}", error), {});
  }
}

}  // namespace

std::optional<std::wstring> ChooseFile(HWND owner) {
  const SameCurrentFolder same;
  const std::wstring filter = FileFilter(OwnString(IDS_BROWSE_FILTER));
  const std::wstring title = OwnString(IDS_BROWSE_TITLE);
  const std::wstring folder = StartMenuFolder();
  wchar_t file[MAX_PATH] = {};
  OPENFILENAMEW choice{};
  choice.lStructSize = sizeof(choice);
  choice.hwndOwner = owner;
  choice.lpstrFilter = filter.c_str();
  choice.lpstrFile = file;
  choice.nMaxFile = ARRAYSIZE(file);
  choice.lpstrInitialDir = folder.c_str();
  choice.lpstrTitle = title.c_str();
  choice.Flags = OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST;
  if (launchPlatform.openFileName(&choice) != FALSE) return file;
  TellFailure(owner, launchPlatform.openFileError());
  return std::nullopt;
}
