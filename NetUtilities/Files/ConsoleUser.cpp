#include "NetUtilities/Files/ConsoleUser.h"

#include <windows.h>

#include <shlobj.h>

#include "NetUtilities/Files/ImpersonationScope.h"
#include "NetUtilities/Files/KnownFolder.h"
#include "NetUtilities/Files/PathPlatform.h"
#include "NetUtilities/Module/Handle.h"

namespace {

// A token with which the calling thread can act as the user of a session; null after logging when there is none.
Handle ImpersonationToken(DWORD session) {
  HANDLE token = nullptr;
  if (pathPlatform.queryUserToken(session, &token) == FALSE) {
    LogImpersonationFailure(L"WTSQueryUserToken");
    return nullptr;
  }
  const Handle primary(token);
  if (pathPlatform.duplicateToken(primary.get(), SecurityImpersonation, &token) == FALSE) {
    LogImpersonationFailure(L"DuplicateToken");
    return nullptr;
  }
  return Handle(token);
}

}  // namespace

std::wstring ConsoleUserLocalAppData() {
  constexpr DWORD kNoSession = 0xFFFFFFFF;
  const DWORD session = pathPlatform.activeConsoleSession();
  if (session == kNoSession) return {};
  const Handle token = ImpersonationToken(session);
  if (!token) return {};
  ImpersonationScope impersonation(token.get());
  if (!impersonation.IsActive()) return {};
  std::wstring folder;
  LookUpKnownFolder(FOLDERID_LocalAppData, 0, folder);
  return impersonation.End() ? folder : std::wstring();
}
