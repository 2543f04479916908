#pragma once

#include <windows.h>

#include <shlobj.h>
#include <wtsapi32.h>

/// The platform's functions behind PathData. Tests put others in their place.
struct PathPlatform {
  decltype(&SHGetKnownFolderPath) knownFolderPath = SHGetKnownFolderPath;
  decltype(&GetModuleFileNameW) moduleFileName = GetModuleFileNameW;
  decltype(&WTSGetActiveConsoleSessionId) activeConsoleSession = WTSGetActiveConsoleSessionId;
  decltype(&WTSQueryUserToken) queryUserToken = WTSQueryUserToken;
  decltype(&DuplicateToken) duplicateToken = DuplicateToken;
  decltype(&ImpersonateLoggedOnUser) impersonate = ImpersonateLoggedOnUser;
  decltype(&RevertToSelf) revertToSelf = RevertToSelf;
};

extern PathPlatform pathPlatform;
