#include "WaylineDll/Programs/RegisteredPrograms.h"

#include <windows.h>

#include <optional>
#include <string>
#include <utility>

#include "NetUtilities/Log.h"
#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/IgnoringCase.h"
#include "WaylineDll/Programs/FileThere.h"
#include "WaylineDll/Programs/ProgramRules.h"

namespace {

constexpr wchar_t kUninstallKey[] = LR"(Software\Microsoft\Windows\CurrentVersion\Uninstall)";
constexpr wchar_t kAppPathsKey[] = LR"(Software\Microsoft\Windows\CurrentVersion\App Paths)";
constexpr wchar_t kDisplayName[] = L"DisplayName";
constexpr wchar_t kDisplayIcon[] = L"DisplayIcon";
constexpr wchar_t kUninstallString[] = L"UninstallString";
constexpr wchar_t kSystemComponent[] = L"SystemComponent";

std::wstring Expand(const std::wstring& text) {
  if (text.find(L'%') == std::wstring::npos) return text;
  std::wstring expanded(ExpandEnvironmentStringsW(text.c_str(), nullptr, 0), L'\0');
  const DWORD size = ExpandEnvironmentStringsW(text.c_str(), expanded.data(), static_cast<DWORD>(expanded.size()));
  if (size == 0 || size > expanded.size()) return text;
  expanded.resize(size - 1);
  return expanded;
}

// Empty when the value is not there, or no text.
std::wstring ReadText(const RegistryKey& key, const std::wstring& valueName) {
  std::wstring text;
  if (key.ReadString(valueName, text, {}) == ERROR_INVALID_DATA) {
    Log(LogLevel::Detail, Format(L"{}\\{} is no text: it is ignored", key.Path(), valueName));
  }
  return Expand(text);
}

// A program that is there, under the name that the key has for it.
std::optional<Program> Offer(const RegistryKey& key, std::wstring name, std::wstring path) {
  if (name.empty() || path.empty()) {
    Log(LogLevel::Trace, Format(L"{} names no program to offer", key.Path()));
    return {};
  }
  if (!IsFileThere(path)) {
    Log(LogLevel::Detail, Format(L"{} names a program that is missing: {}", key.Path(), path));
    return {};
  }
  const Program::Kind kind = KindOfFile(path);
  return Program{.name = std::move(name), .path = std::move(path), .kind = kind};
}

std::optional<Program> ReadProduct(const RegistryKey& key, const std::wstring& /*keyName*/) {
  // A part of the system, or of another product, that users are not shown.
  DWORD isHidden = 0;
  key.ReadDword(kSystemComponent, isHidden, 0);
  if (isHidden != 0) return {};
  std::wstring program = ProgramOfIcon(ReadText(key, kDisplayIcon));
  // Many show the icon of the program that removes them.
  if (ContainsNoCase(ReadText(key, kUninstallString), program)) program.clear();
  return Offer(key, ReadText(key, kDisplayName), std::move(program));
}

std::optional<Program> ReadAppPath(const RegistryKey& key, const std::wstring& keyName) {
  return Offer(key, keyName.substr(0, keyName.rfind(L'.')), WithoutQuotes(ReadText(key, {})));
}

using Reader = std::optional<Program> (*)(const RegistryKey& key, const std::wstring& keyName);

void AddPrograms(HKEY root, const wchar_t* list, REGSAM view, Reader read, std::vector<Program>& programs) {
  RegistryKey key;
  if (key.Open(root, list, KEY_READ | view) != ERROR_SUCCESS) return;
  for (const std::wstring& name : key.GetSubkeyNames()) {
    RegistryKey entry;
    if (entry.Open(root, Format(L"{}\\{}", list, name), KEY_READ | view) != ERROR_SUCCESS) continue;
    if (auto program = read(entry, name)) programs.push_back(std::move(*program));
  }
}

void AddFromAllViews(const wchar_t* list, Reader read, std::vector<Program>& programs) {
  // What belongs to the user is the same for 64-bit and 32-bit programs.
  AddPrograms(HKEY_CURRENT_USER, list, 0, read, programs);
  AddPrograms(HKEY_LOCAL_MACHINE, list, KEY_WOW64_64KEY, read, programs);
  AddPrograms(HKEY_LOCAL_MACHINE, list, KEY_WOW64_32KEY, read, programs);
}

}  // namespace

std::vector<Program> RegisteredPrograms() {
  std::vector<Program> programs;
  AddFromAllViews(kUninstallKey, ReadProduct, programs);
  AddFromAllViews(kAppPathsKey, ReadAppPath, programs);
  return programs;
}
