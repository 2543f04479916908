#pragma once

#include <windows.h>

#include <sddl.h>

#include <string>

/// The name of the account that the calling thread runs as; empty when it cannot be determined.
std::wstring CurrentUserName();

/// The SID in string form ("S-1-5-...") of an account that this machine knows: one of its own or of a domain, with or
/// without the domain's name. Returns 0, or the Win32 error, which is logged; `out` is then empty.
DWORD UserNameToSidString(const std::wstring& userName, std::wstring& out);

/// The platform's functions behind the above. Tests put others in their place.
struct AccountPlatform {
  decltype(&GetUserNameW) getUserName = GetUserNameW;
  decltype(&LookupAccountNameW) lookupAccountName = LookupAccountNameW;
  decltype(&ConvertSidToStringSidW) convertSidToStringSid = ConvertSidToStringSidW;
};

extern AccountPlatform accountPlatform;
