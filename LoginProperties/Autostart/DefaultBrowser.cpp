#include "LoginProperties/Autostart/DefaultBrowser.h"

#include <windows.h>

#include <shobjidl.h>

#include <source_location>
#include <string>
#include <string_view>

#include "LoginProperties/Autostart/BrowserRules.h"
#include "LoginProperties/Autostart/LaunchPlatform.h"
#include "LoginProperties/Autostart/RemoveArguments.h"
#include "LoginProperties/ProfilePage/CutText.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Module/ComApartment.h"
#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/FunctionName.h"
#include "NetUtilities/Text/Trim.h"

namespace {

constexpr wchar_t kBrowsersKey[] = LR"(software\clients\StartMenuInternet)";
constexpr wchar_t kOpenCommand[] = LR"(\shell\open\command)";

std::vector<RegAppItem>& KnownBrowsers() {
  static std::vector<RegAppItem> browsers;
  return browsers;
}

std::wstring ReadDefaultValue(HKEY root, const std::wstring& subkey) {
  RegistryKey key;
  std::wstring text;
  if (key.Open(root, subkey, KEY_READ) == ERROR_SUCCESS) key.ReadString({}, text, {});
  return text;
}

// Commands are compared, shown and looked for as files: the quotes around a path with blanks are in the way.
std::wstring ProgramOf(std::wstring_view commandLine) {
  const std::wstring program = RemoveArguments(commandLine);
  return std::wstring(Unquote(program));
}

std::wstring ReadProgram(HKEY root, const std::wstring& key) {
  return ProgramOf(ReadDefaultValue(root, key + kOpenCommand));
}

bool HasEdge() {
  OSVERSIONINFOEXW wanted{};
  wanted.dwOSVersionInfoSize = sizeof(wanted);
  wanted.dwMajorVersion = 10;
  DWORDLONG comparison = 0;
  for (const DWORD part : {DWORD{VER_MAJORVERSION}, DWORD{VER_MINORVERSION}, DWORD{VER_SERVICEPACKMAJOR}}) {
    comparison = VerSetConditionMask(comparison, part, VER_GREATER_EQUAL);
  }
  return launchPlatform.verifyVersion(&wanted, VER_MAJORVERSION | VER_MINORVERSION | VER_SERVICEPACKMAJOR,
                                      comparison) != FALSE;
}

// The programmatic identifier of the default program; empty when there is none.
std::wstring QueryDefault(const std::wstring& protocol) {
  constexpr size_t kLongestProtocol = 14;
  if (protocol.size() > kLongestProtocol) return {};
  const ComApartment apartment;
  const auto associations = CreateObject<ApplicationAssociationRegistration, IApplicationAssociationRegistration>();
  if (!associations) return {};
  const ASSOCIATIONTYPE type = protocol.starts_with(L'.') ? AT_FILEEXTENSION : AT_URLPROTOCOL;
  wchar_t* answer = nullptr;
  const HRESULT result = associations->QueryCurrentDefault(protocol.c_str(), type, AL_EFFECTIVE, &answer);
  const TaskMemory<wchar_t> owner(answer);
  return SUCCEEDED(result) && answer != nullptr ? CutText(answer, MAX_PATH) : std::wstring();
}

std::wstring DefaultProgram(const std::wstring& protocol) {
  const std::wstring identifier = QueryDefault(protocol);
  if (identifier.empty()) return {};
  return IsCommand(identifier) ? ProgramOf(identifier) : ReadProgram(HKEY_CLASSES_ROOT, identifier);
}

}  // namespace

const std::vector<RegAppItem>& FindBrowsers() {
  std::vector<RegAppItem>& browsers = KnownBrowsers();
  browsers.clear();
  RegistryKey key;
  if (key.Open(HKEY_LOCAL_MACHINE, kBrowsersKey, KEY_READ) == ERROR_SUCCESS) {
    for (const std::wstring& name : key.GetSubkeyNames()) {
      const std::wstring subkey = Format(L"{}\\{}", kBrowsersKey, name);
      browsers.push_back(
          {.name = ReadDefaultValue(HKEY_LOCAL_MACHINE, subkey), .command = ReadProgram(HKEY_LOCAL_MACHINE, subkey)});
    }
  }
  if (HasEdge()) AddEdge(browsers);
  return browsers;
}

RegAppItem GetDefaultBrowserApp(const wchar_t* protocol) {
  const std::wstring command = DefaultProgram(protocol == nullptr || *protocol == L'\0' ? L"http" : protocol);
  if (command.empty()) {
    Log(LogLevel::Error,
        Format(L"{}: Missing a default!", CleanFunctionName(std::source_location::current().function_name())));
    FindBrowsers();
  } else if (KnownBrowsers().empty()) {
    FindBrowsers();
  }
  return FindBrowser(KnownBrowsers(), command);
}
