#include "WaylineDll/SetupWizard/PlatformText.h"

#include <windows.h>

#include <winsock2.h>
#include <ws2tcpip.h>

bool IsIpAddress(IpVersion version, const std::wstring& text) {
  IN6_ADDR address{};  // large enough for both
  return InetPtonW(version == IpVersion::V4 ? AF_INET : AF_INET6, text.c_str(), &address) == 1;
}

bool IsAlphanumeric(wchar_t character) { return IsCharAlphaNumericW(character) != FALSE; }

bool AreSameNames(std::wstring_view left, std::wstring_view right) {
  return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(), static_cast<int>(right.size()),
                              TRUE) == CSTR_EQUAL;
}
