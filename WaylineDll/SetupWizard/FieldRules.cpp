#include "WaylineDll/SetupWizard/FieldRules.h"

#include <algorithm>

#include "NetUtilities/Text/SplitNonEmpty.h"
#include "NetUtilities/Text/Trim.h"
#include "WaylineDll/SetupWizard/PlatformText.h"

namespace {

// As in text from web pages and documents: with the wide and the fixed blank, and the separators of Unicode.
constexpr std::wstring_view kBlanks = L" \t\r\n\v\f\u0085\u00a0\u2028\u2029\u202f\u3000\ufeff";
constexpr std::wstring_view kLineEnds = L"\r\n\v\f\u0085\u2028\u2029";

constexpr size_t kLongestText = 256;
constexpr size_t kLongestLabel = 63;
constexpr size_t kLongestDomainName = 253;

bool IsBlank(wchar_t character) { return kBlanks.find(character) != std::wstring_view::npos; }

bool IsControl(wchar_t character) {
  return character < 0x20 || (character >= 0x7f && character < 0xa0) || character == 0x2028 || character == 0x2029;
}

bool IsLabel(std::wstring_view label) {
  return !label.empty() && label.size() <= kLongestLabel && label.front() != L'-' && label.back() != L'-' &&
         std::ranges::all_of(label, [](wchar_t character) {
           return character == L'-' || character == L'_' || IsAlphanumeric(character);
         });
}

}  // namespace

std::wstring Trimmed(std::wstring_view text) { return std::wstring(Trim(text, kBlanks)); }

std::wstring PastedText(std::wstring_view text) {
  std::wstring line;
  for (const std::wstring& part : SplitNonEmpty(Trimmed(text), kLineEnds)) {
    if (!line.empty()) line += L' ';
    line += part;
  }
  return line;
}

bool HasControlCharacter(std::wstring_view text) { return std::ranges::any_of(text, IsControl); }

bool IsAccount(std::wstring_view text) { return text.size() <= kLongestText && !HasControlCharacter(text); }

bool IsUserId(std::wstring_view text) { return IsAccount(text) && std::ranges::none_of(text, IsBlank); }

bool IsDomainName(std::wstring_view text) {
  if (text.size() > kLongestDomainName) return false;
  for (size_t begin = 0;;) {
    const size_t end = std::min(text.find(L'.', begin), text.size());
    if (!IsLabel(text.substr(begin, end - begin))) return false;
    if (end == text.size()) return true;
    begin = end + 1;
  }
}

std::optional<std::wstring> SuffixList(std::wstring_view text) {
  std::wstring list;
  for (const std::wstring& suffix : SplitNonEmpty(text, std::wstring(L",;").append(kBlanks))) {
    if (!IsDomainName(suffix)) return std::nullopt;
    if (!list.empty()) list += L',';
    list += suffix;
  }
  return list.empty() ? std::nullopt : std::optional(std::move(list));
}
