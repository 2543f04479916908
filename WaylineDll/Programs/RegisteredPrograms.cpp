#include "WaylineDll/Programs/RegisteredPrograms.h"

#include <windows.h>

#include <optional>
#include <string>
#include <utility>

#include "NetUtilities/Log.h"
#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/IgnoringCase.h"
#include "WaylineDll/Programs/FileCheck.h"
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
std::optional<Program> Offer(FileCheck& files, const RegistryKey& key, std::wstring name, std::wstring path) {
  if (name.empty() || path.empty()) {
    Log(LogLevel::Trace, Format(L"{} names no program to offer", key.Path()));
    return {};
  }
  if (!files.IsThere(path)) {
    Log(LogLevel::Detail, Format(L"{} names a program that is missing: {}", key.Path(), path));
    return {};
  }
  const Program::Kind kind = KindOfFile(path);
  return Program{.name = std::move(name), .path = std::move(path), .kind = kind};
}

std::optional<Program> ReadProduct(FileCheck& files, const RegistryKey& key, const std::wstring& /*keyName*/) {
  std::wstring program = ProgramOfIcon(ReadText(key, kDisplayIcon));
  if (!program.empty()) {
    // A part of the system, or of another product, that users are not shown.
    DWORD isHidden = 0;
    key.ReadDword(kSystemComponent, isHidden, 0);
    // Many show the icon of the program that removes them.
    if (isHidden != 0 || ContainsNoCase(ReadText(key, kUninstallString), program)) program.clear();
  }
  return Offer(files, key, ReadText(key, kDisplayName), std::move(program));
}

std::optional<Program> ReadAppPath(FileCheck& files, const RegistryKey& key, const std::wstring& keyName) {
  return Offer(files, key, keyName.substr(0, keyName.rfind(L'.')), WithoutQuotes(ReadText(key, {})));
}

using Reader = std::optional<Program> (*)(FileCheck& files, const RegistryKey& key, const std::wstring& keyName);

class Search {
 public:
  // Reads the entries of a list, which is kept in several places.
  void Add(const wchar_t* list, Reader read) {
    // What belongs to the user is the same for 64-bit and 32-bit programs.
    Add(HKEY_CURRENT_USER, 0, list, read);
    Add(HKEY_LOCAL_MACHINE, KEY_WOW64_64KEY, list, read);
    Add(HKEY_LOCAL_MACHINE, KEY_WOW64_32KEY, list, read);
  }

  std::vector<Program> Found() && { return std::move(programs_); }

 private:
  void Add(HKEY root, REGSAM view, const wchar_t* list, Reader read) {
    RegistryKey key;
    if (key.Open(root, list, KEY_READ | view) != ERROR_SUCCESS) return;
    for (const std::wstring& name : key.GetSubkeyNames()) {
      RegistryKey entry;
      if (entry.Open(root, Format(L"{}\\{}", list, name), KEY_READ | view) != ERROR_SUCCESS) continue;
      if (auto program = read(files_, entry, name)) programs_.push_back(std::move(*program));
    }
  }

  FileCheck files_;
  std::vector<Program> programs_;
};

}  // namespace

std::vector<Program> RegisteredPrograms() {
  Search search;
  search.Add(kUninstallKey, ReadProduct);
  search.Add(kAppPathsKey, ReadAppPath);
  return std::move(search).Found();
}
