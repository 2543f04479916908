#include "NetUtilities/Registry/InstallDword.h"

#include <windows.h>

#include <optional>

#include "NetUtilities/Log.h"
#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Registry/UserAccount.h"
#include "NetUtilities/Text/ErrorText.h"
#include "NetUtilities/Text/Format.h"

namespace {

// The user whom the client has noted as logged on; nothing, and logged, when that cannot be read. The registry returns
// its errors and leaves the thread's last error alone: the lines tell whatever that was before.
std::optional<std::wstring> LoggedOnUser() {
  RegistryKey key;
  if (key.Open(HKEY_LOCAL_MACHINE, kClientKey, KEY_READ) != ERROR_SUCCESS) {
    Log(LogLevel::Trace, Format(L"OpenKey failed! {}", SystemErrorText(GetLastError())));
    return std::nullopt;
  }
  std::wstring user;
  if (key.ReadString(kLoggedOnUserValue, user, L"") != ERROR_SUCCESS) {
    Log(LogLevel::Trace, Format(L"ReadValue failed! {}", SystemErrorText(GetLastError())));
    return std::nullopt;
  }
  return user;
}

}  // namespace

uint32_t ReadInstallDword(const std::wstring& valueName) {
  if (CurrentUserName() != L"SYSTEM") {
    return ReadRegistryDword(HKEY_CURRENT_USER, kCurrentInstallKey, valueName, 0);
  }
  std::wstring sid;
  const std::optional<std::wstring> user = LoggedOnUser();
  if (!user || UserNameToSidString(*user, sid) != ERROR_SUCCESS) return 0;
  return ReadRegistryDword(HKEY_USERS, Format(L"{}\\{}", sid, kCurrentInstallKey), valueName, 0);
}
