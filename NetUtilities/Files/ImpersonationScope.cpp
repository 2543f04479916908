#include "NetUtilities/Files/ImpersonationScope.h"

#include <utility>

#include "NetUtilities/Files/PathPlatform.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Text/ErrorText.h"

ImpersonationScope::ImpersonationScope(HANDLE token) : active_(pathPlatform.impersonate(token) != FALSE) {
  if (!active_) LogImpersonationFailure(L"ImpersonateLoggedOnUser");
}

bool ImpersonationScope::End() {
  if (!std::exchange(active_, false) || pathPlatform.revertToSelf() != FALSE) return true;
  LogImpersonationFailure(L"Error: RevertToSelf");
  return false;
}

void LogImpersonationFailure(const wchar_t* what) {
  Log(LogSource::Impersonation, LogLevel::Error, what + ErrorSuffix(static_cast<int32_t>(GetLastError())));
}
