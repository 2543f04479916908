#include "NetUtilities/Files/PathData.h"

#include <shlobj.h>

#include <array>
#include <cwchar>
#include <filesystem>

#include "NetUtilities/Files/ClientFolders.h"
#include "NetUtilities/Files/ConsoleUser.h"
#include "NetUtilities/Files/IniSwitches.h"
#include "NetUtilities/Files/KnownFolder.h"
#include "NetUtilities/Files/PathPlatform.h"
#include "NetUtilities/Files/WinLogonDesktop.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Module/OwnModule.h"
#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/IgnoringCase.h"

namespace {

using std::filesystem::path;

std::wstring FileOfModule(HMODULE module) {
  std::array<wchar_t, MAX_PATH> buffer{};
  const DWORD length = pathPlatform.moduleFileName(module, buffer.data(), static_cast<DWORD>(buffer.size()));
  // A path that does not fit is cut, and its length then counts the terminator too.
  return std::wstring(buffer.data(), wcsnlen(buffer.data(), length));
}

}  // namespace

std::wstring PathData::Read(const std::wstring& field) const {
  const std::scoped_lock lock(mutex_);
  return field;
}

// False when another thread has filled the field before.
bool PathData::Fill(std::wstring& field, const std::wstring& text) {
  const std::scoped_lock lock(mutex_);
  if (!field.empty()) return false;
  field = text;
  return true;
}

// Nothing is locked while `compute` runs.
template <typename Compute>
std::wstring PathData::GetOrCompute(std::wstring& field, Compute compute) {
  std::wstring text = Read(field);
  if (text.empty()) {
    text = compute();
    Fill(field, text);
  }
  return text;
}

std::wstring PathData::GetKnownFolder(std::wstring& field, const KNOWNFOLDERID& folder, const wchar_t* failure) {
  return GetOrCompute(field, [&] { return KnownFolder(folder, 0, failure); });
}

std::wstring PathData::GetWindowsFolder() {
  return GetKnownFolder(windowsFolder_, FOLDERID_Windows, L"Failed to get Windows folder");
}

std::wstring PathData::GetSystemFolder() {
  return GetKnownFolder(systemFolder_, FOLDERID_System, L"Failed to get System folder");
}

std::wstring PathData::GetDesktopFolder() {
  return GetKnownFolder(desktopFolder_, FOLDERID_Desktop, L"Failed to get Desktop folder");
}

std::wstring PathData::GetProgramsFolder() {
  return GetKnownFolder(programsFolder_, FOLDERID_Programs, L"Failed to get Programs folder");
}

std::wstring PathData::GetProgramFilesFolder() {
  return GetKnownFolder(programFilesFolder_, FOLDERID_ProgramFiles, L"Failed to get Programs Files folder");
}

std::wstring PathData::GetProfileFolder() {
  return GetKnownFolder(profileFolder_, FOLDERID_Profile, L"Failed to get Profile folder");
}

std::wstring PathData::GetInstallPath() {
  return GetOrCompute(installPath_, [this] {
    const std::wstring executable = GetExecutablePath();
    const std::wstring folder = executable.substr(0, executable.find_last_of(L"\\/") + 1);
    // A program of the System folder only hosts the client.
    const bool hosted = ContainsNoCaseAscii(folder, GetSystemFolder());
    return hosted ? ReadHklmString(kCurrentInstallKey, kInstallPathValue, L"") : folder;
  });
}

std::wstring PathData::GetProgramDataPath() {
  return GetOrCompute(programDataPath_, [] {
    const std::wstring base = KnownFolder(FOLDERID_ProgramData, KF_FLAG_CREATE, L"Failed to get Program Data folder");
    if (base.empty()) return std::wstring();
    const path product = CreateProductFolder(base);
    CreateFolder(product / kDataFolder);
    return product.wstring();
  });
}

std::wstring PathData::GetUserDirectory() {
  std::wstring folder = Read(userDirectory_);
  if (folder.empty()) {
    folder = FindUserDirectory();
    if (Fill(userDirectory_, folder)) Log(LogLevel::Detail, Format(L"Setting the user directory to '{}'", folder));
  }
  return folder;
}

std::wstring PathData::FindUserDirectory() {
  const std::wstring base = BaseOfUserDirectory();
  if (base.empty()) return {};
  std::wstring folder = CreateProductFolder(base).wstring();
  if (IsSwitchOn(kDebugUserDirectory)) folder = GetInstallPath();
  // Without an install folder this would be a folder in the current directory.
  if (!folder.empty()) CreateFolder(path(folder) / kDataFolder);
  return folder;
}

std::wstring PathData::BaseOfUserDirectory() {
  if (IsSharedSettings() || IsStartedOnWinLogonDesktop()) {
    return KnownFolder(FOLDERID_ProgramData, KF_FLAG_CREATE, L"Failed to get program data folder");
  }
  std::wstring base;
  if (impersonateConsoleUser_) base = GetConsoleUserLocalAppData();
  if (base.empty()) {
    base = KnownFolder(FOLDERID_LocalAppData, KF_FLAG_CREATE, L"Failed to get Local App Data folder");
  }
  return base;
}

std::wstring PathData::GetUserDataDirectory() {
  const std::wstring folder = GetUserDirectory();
  return folder.empty() ? folder : (path(folder) / kDataFolder).wstring();
}

std::wstring PathData::GetExecutablePath() {
  return GetOrCompute(executablePath_, [] { return FileOfModule(nullptr); });
}

std::wstring PathData::GetModulePath() {
  return GetOrCompute(modulePath_, [] { return FileOfModule(OwnModule()); });
}

bool PathData::IsSharedSettings() {
  if (!sharedSettingsRead_) {
    RegistryKey key;
    DWORD data = 0;
    if (key.Open(HKEY_LOCAL_MACHINE, kCurrentInstallKey, KEY_READ) == ERROR_SUCCESS) {
      key.ReadDwordAs(L"BYTE", kSharedSettingsValue, data);
    }
    // The text "1" makes the settings shared; the number 1 does not.
    sharedSettings_ = LOWORD(data) == L'1';
    sharedSettingsRead_ = true;
  }
  return sharedSettings_;
}

std::wstring PathData::GetConsoleUserLocalAppData() { return ConsoleUserLocalAppData(); }
