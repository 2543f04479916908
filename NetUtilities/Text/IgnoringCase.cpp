#include "NetUtilities/Text/IgnoringCase.h"

#include <algorithm>
#include <cwctype>

namespace {

wchar_t LowerAscii(wchar_t character) {
  return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character - L'A' + L'a') : character;
}

template <typename Lower>
bool Contains(std::wstring_view haystack, std::wstring_view needle, Lower lower) {
  return std::search(haystack.begin(), haystack.end(), needle.begin(), needle.end(),
                     [lower](wchar_t left, wchar_t right) { return lower(left) == lower(right); }) != haystack.end();
}

}  // namespace

wchar_t LowerWide(wchar_t character) { return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(character))); }

bool ContainsNoCase(std::wstring_view haystack, std::wstring_view needle) {
  return !needle.empty() && Contains(haystack, needle, LowerWide);
}

bool ContainsNoCaseAscii(std::wstring_view haystack, std::wstring_view needle) {
  return !haystack.empty() && Contains(haystack, needle, LowerAscii);
}

bool EqualsNoCaseAscii(std::wstring_view left, std::wstring_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](wchar_t a, wchar_t b) { return LowerAscii(a) == LowerAscii(b); });
}
