#include <locale.h>
#include <wctype.h>

#include <algorithm>
#include <arpa/inet.h>

#include "NetUtilities/Text/Utf8.h"
#include "WaylineDll/SetupWizard/PlatformText.h"

namespace {

// The program's own locale may know no letters but those of ASCII.
locale_t Unicode() {
  static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return unicode;
}

wint_t Lower(wchar_t character) { return towlower_l(static_cast<wint_t>(character), Unicode()); }

}  // namespace

bool IsIpAddress(IpVersion version, const std::wstring& text) {
  in6_addr address{};  // large enough for both
  return inet_pton(version == IpVersion::V4 ? AF_INET : AF_INET6, ToUtf8(text).c_str(), &address) == 1;
}

bool IsAlphanumeric(wchar_t character) { return iswalnum_l(static_cast<wint_t>(character), Unicode()) != 0; }

bool AreSameNames(std::wstring_view left, std::wstring_view right) {
  return std::ranges::equal(left, right, [](wchar_t one, wchar_t other) { return Lower(one) == Lower(other); });
}
