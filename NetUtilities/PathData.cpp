#include "NetUtilities/PathData.h"

#include <windows.h>

#include <shlobj.h>

#include <array>
#include <filesystem>
#include <memory>

#include "NetUtilities/ErrorText.h"
#include "NetUtilities/Format.h"
#include "NetUtilities/IniFile.h"
#include "NetUtilities/Logger/Log.h"
#include "NetUtilities/OwnModule.h"
#include "NetUtilities/RegistryKey.h"
#include "NetUtilities/Singleton.h"
#include "NetUtilities/Text.h"

namespace {

using std::filesystem::path;

constexpr wchar_t kVendorFolder[] = L"Ostrel";
constexpr wchar_t kProductFolder[] = L"Wayline";
constexpr wchar_t kDataFolder[] = L"Data";

// The path of a known folder, or empty text after logging `failure`.
std::wstring KnownFolder(const KNOWNFOLDERID& folder, DWORD flags, const wchar_t* failure) {
  struct FreeTaskMemory {
    void operator()(wchar_t* memory) const { CoTaskMemFree(memory); }
  };
  wchar_t* text = nullptr;
  const HRESULT result = SHGetKnownFolderPath(folder, flags, nullptr, &text);
  const std::unique_ptr<wchar_t, FreeTaskMemory> owner(text);
  if (FAILED(result)) {
    Log(LogLevel::Error, failure + ErrorSuffix(result));
    return {};
  }
  return text;
}

// A folder that cannot be created shows later, when a file in it cannot be opened.
void CreateFolder(const path& folder) {
  std::error_code ignored;
  std::filesystem::create_directory(folder, ignored);
}

path ProductFolderIn(const std::wstring& base) {
  const path vendor = path(base) / kVendorFolder;
  CreateFolder(vendor);
  path product = vendor / kProductFolder;
  CreateFolder(product);
  return product;
}

std::wstring FileOfModule(HMODULE module) {
  std::array<wchar_t, MAX_PATH> buffer{};
  const DWORD length = GetModuleFileNameW(module, buffer.data(), static_cast<DWORD>(buffer.size()));
  return std::wstring(buffer.data(), length);
}

bool StartedOnWinLogonDesktop() {
  STARTUPINFOW startup{};
  GetStartupInfoW(&startup);
  return startup.lpDesktop != nullptr && EqualsNoCaseAscii(startup.lpDesktop, L"winsta0\\winlogon");
}

bool IsTestSwitchOn(const wchar_t* section, const wchar_t* key) {
  const auto ini = Singleton<IniFile>::Get();
  return ini && ini->GetBool(section, key);
}

}  // namespace

std::wstring PathData::GetInstallPath() {
  if (installPath_.empty()) {
    const std::wstring executable = FileOfModule(nullptr);
    installPath_ = executable.substr(0, executable.find_last_of(L"\\/") + 1);
    const std::wstring system = KnownFolder(FOLDERID_System, 0, L"Failed to get System folder");
    // A System folder that cannot be determined says nothing of this process.
    if (!system.empty() && ContainsNoCaseAscii(installPath_, system)) {
      installPath_ = ReadHklmString(kCurrentInstallKey, L"Path", L"");
    }
  }
  return installPath_;
}

std::wstring PathData::GetProgramDataPath() {
  const std::scoped_lock lock(mutex_);
  if (programDataPath_.empty()) {
    const std::wstring base = KnownFolder(FOLDERID_ProgramData, KF_FLAG_CREATE, L"Failed to get Program Data folder");
    if (!base.empty()) {
      programDataPath_ = ProductFolderIn(base).wstring();
      CreateFolder(path(programDataPath_) / kDataFolder);
    }
  }
  return programDataPath_;
}

std::wstring PathData::GetUserDirectory() {
  if (std::wstring known = KnownUserDirectory(); !known.empty()) return known;
  // Asked while the lock is free: looking the switch up needs the program-data path, which takes the lock itself.
  const bool useInstallPath = IsTestSwitchOn(L"Misc", L"DebugUserDirectory");
  const std::scoped_lock lock(mutex_);
  if (userDirectory_.empty()) {
    const std::wstring base = BaseOfUserDirectory();
    if (!base.empty()) {
      userDirectory_ = ProductFolderIn(base).wstring();
      if (useInstallPath) userDirectory_ = GetInstallPath();
      userDataDirectory_ = (path(userDirectory_) / kDataFolder).wstring();
      CreateFolder(userDataDirectory_);
    }
    Log(LogLevel::Detail, Format(L"Setting the user directory to '{}'", userDirectory_));
  }
  return userDirectory_;
}

std::wstring PathData::KnownUserDirectory() {
  const std::scoped_lock lock(mutex_);
  return userDirectory_;
}

std::wstring PathData::BaseOfUserDirectory() {
  if (IsSharedSettings() || StartedOnWinLogonDesktop()) {
    return KnownFolder(FOLDERID_ProgramData, KF_FLAG_CREATE, L"Failed to get program data folder");
  }
  return KnownFolder(FOLDERID_LocalAppData, KF_FLAG_CREATE, L"Failed to get Local App Data folder");
}

std::wstring PathData::GetUserDataDirectory() {
  GetUserDirectory();
  const std::scoped_lock lock(mutex_);
  return userDataDirectory_;
}

std::wstring PathData::GetExecutablePath() {
  const std::scoped_lock lock(mutex_);
  if (executablePath_.empty()) executablePath_ = FileOfModule(nullptr);
  return executablePath_;
}

std::wstring PathData::GetModulePath() {
  const std::scoped_lock lock(mutex_);
  if (modulePath_.empty()) modulePath_ = FileOfModule(OwnModule());
  return modulePath_;
}

bool PathData::IsSharedSettings() {
  if (!sharedSettingsRead_) {
    RegistryKey key;
    DWORD data = 0;
    if (key.Open(HKEY_LOCAL_MACHINE, kCurrentInstallKey, KEY_READ) == ERROR_SUCCESS) {
      key.ReadDwordAs(L"BYTE", L"SharedSettings", data);
    }
    // The text "1" makes the settings shared; the number 1 does not.
    sharedSettings_ = LOWORD(data) == L'1';
    sharedSettingsRead_ = true;
  }
  return sharedSettings_;
}

bool IsRunningInWinLogonDesktop() {
  static const bool running = IsTestSwitchOn(L"GINA", L"RunnningInWinLogonDesktop") || StartedOnWinLogonDesktop();
  return running;
}
