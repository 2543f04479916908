#include "NetUtilities/Registry/UserAccount.h"

#include <array>

#include "NetUtilities/Log.h"
#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Text/ErrorText.h"

AccountPlatform accountPlatform;

namespace {

// Logs the calling thread's last error and returns it.
DWORD LogLastError(const wchar_t* message) {
  const DWORD code = GetLastError();
  Log(LogLevel::Error, message + ErrorSuffix(static_cast<int32_t>(code)));
  return code;
}

}  // namespace

std::wstring CurrentUserName() {
  std::array<wchar_t, 257> name{};  // the longest name, 256 characters (UNLEN), and its terminator
  auto length = static_cast<DWORD>(name.size());
  return accountPlatform.getUserName(name.data(), &length) != FALSE ? name.data() : L"";
}

DWORD UserNameToSidString(const std::wstring& userName, std::wstring& out) {
  out.clear();
  alignas(SID) std::array<BYTE, SECURITY_MAX_SID_SIZE> sid{};
  std::array<wchar_t, 64> domain{};
  auto sidSize = static_cast<DWORD>(sid.size());
  auto domainLength = static_cast<DWORD>(domain.size());
  SID_NAME_USE use{};
  if (accountPlatform.lookupAccountName(nullptr, userName.c_str(), sid.data(), &sidSize, domain.data(), &domainLength,
                                        &use) == FALSE) {
    return LogLastError(L"LookupAccountName failed!");
  }
  wchar_t* text = nullptr;
  if (accountPlatform.convertSidToStringSid(sid.data(), &text) == FALSE) {
    return LogLastError(L"ConvertSidToStringSid failed!");
  }
  const LocalMemory<wchar_t> owner(text);
  out = text;
  return ERROR_SUCCESS;
}
