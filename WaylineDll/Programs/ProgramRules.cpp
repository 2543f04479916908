#include "WaylineDll/Programs/ProgramRules.h"

#include <algorithm>
#include <array>
#include <ranges>
#include <set>
#include <utility>

#include "NetUtilities/Text/IgnoringCase.h"
#include "NetUtilities/Text/Trim.h"

namespace {

// Above the record types of autostart entries, which stand in the same list.
constexpr uint32_t kFirstId = 1000;

std::wstring_view ExtensionOf(std::wstring_view path) {
  const size_t dot = path.find_last_of(L".\\/:");
  return dot != std::wstring_view::npos && path[dot] == L'.' ? path.substr(dot) : std::wstring_view();
}

// The text before the number of an icon, if there is one.
std::wstring_view WithoutNumber(std::wstring_view icon) {
  const size_t comma = icon.rfind(L',');
  if (comma == std::wstring_view::npos) return icon;
  const std::wstring_view number = Trim(icon.substr(comma + 1));
  const bool isNumber = number.find_first_not_of(L"-0123456789") == std::wstring_view::npos;
  return isNumber ? icon.substr(0, comma) : icon;
}

std::wstring Lower(std::wstring text) {
  std::ranges::transform(text, text.begin(), LowerWide);
  return text;
}

}  // namespace

std::wstring WithoutQuotes(std::wstring_view text) { return std::wstring(Unquote(Trim(text))); }

std::wstring ProgramOfIcon(std::wstring_view icon) {
  // The number may stand behind the quotes or between them.
  std::wstring file = WithoutQuotes(WithoutNumber(WithoutQuotes(WithoutNumber(icon))));
  if (!EqualsNoCaseAscii(ExtensionOf(file), L".exe")) file.clear();
  return file;
}

Program::Kind KindOfFile(std::wstring_view path) {
  constexpr std::array<std::wstring_view, 4> kRun = {L".exe", L".com", L".bat", L".cmd"};
  const auto matches = [&](std::wstring_view extension) { return EqualsNoCaseAscii(ExtensionOf(path), extension); };
  return std::ranges::any_of(kRun, matches) ? Program::Kind::Application : Program::Kind::Document;
}

bool IsWebAddress(std::wstring_view text) {
  constexpr std::array<std::wstring_view, 2> kSchemes = {L"http://", L"https://"};
  return std::ranges::any_of(kSchemes, [&](std::wstring_view scheme) {
    return text.size() > scheme.size() && EqualsNoCaseAscii(text.substr(0, scheme.size()), scheme);
  });
}

std::wstring FolderOfFile(std::wstring_view path) {
  const size_t last = path.find_last_of(L"\\/");
  if (last == std::wstring_view::npos) return {};
  const bool behindDrive = last > 0 && path[last - 1] == L':';
  return std::wstring(path.substr(0, behindDrive ? last + 1 : last));
}

std::vector<Program> ProgramsToOffer(std::vector<Program> found,
                                     const std::function<std::string(const std::wstring& name)>& sortKey) {
  std::set<std::pair<std::wstring, std::wstring>> known;
  std::vector<std::pair<std::string, Program>> sorted;
  sorted.reserve(found.size());
  for (Program& program : found) {
    if (!known.emplace(Lower(program.path), program.parameters).second) continue;
    std::string key = sortKey(program.name);
    sorted.emplace_back(std::move(key), std::move(program));
  }
  std::ranges::stable_sort(sorted, {}, &std::pair<std::string, Program>::first);
  std::vector<Program> offered;
  offered.reserve(sorted.size());
  for (Program& program : sorted | std::views::values) {
    program.id = kFirstId + static_cast<uint32_t>(offered.size());
    offered.push_back(std::move(program));
  }
  return offered;
}
