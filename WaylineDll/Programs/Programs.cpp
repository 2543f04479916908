#include "WaylineDll/Programs.h"

#include <windows.h>

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <utility>

#include "NetUtilities/Log.h"
#include "NetUtilities/Module/ComApartment.h"
#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/IgnoringCase.h"
#include "NetUtilities/Text/SortKey.h"
#include "WaylineDll/Programs/PathVariables.h"
#include "WaylineDll/Programs/ProgramRules.h"
#include "WaylineDll/Programs/RegisteredPrograms.h"
#include "WaylineDll/Programs/RegistryPath.h"
#include "WaylineDll/Programs/StartMenuPrograms.h"

namespace {

// Null when there is no such root.
HKEY RootNamed(std::wstring_view name) {
  const std::pair<std::wstring_view, HKEY> roots[] = {
      {L"HKEY_CLASSES_ROOT", HKEY_CLASSES_ROOT},
      {L"HKCR", HKEY_CLASSES_ROOT},
      {L"HKEY_CURRENT_USER", HKEY_CURRENT_USER},
      {L"HKCU", HKEY_CURRENT_USER},
      {L"HKEY_LOCAL_MACHINE", HKEY_LOCAL_MACHINE},
      {L"HKLM", HKEY_LOCAL_MACHINE},
      {L"HKEY_USERS", HKEY_USERS},
      {L"HKU", HKEY_USERS},
  };
  for (const auto& [rootName, root] : roots) {
    if (EqualsNoCaseAscii(name, rootName)) return root;
  }
  return nullptr;
}

}  // namespace

std::vector<Program> LoadInstalledProgramList() {
  const ComApartment apartment;
  // The user knows a program best by its name in the start menu.
  std::vector<Program> found = StartMenuPrograms();
  std::ranges::move(RegisteredPrograms(), std::back_inserter(found));
  return ProgramsToOffer(std::move(found), [](const std::wstring& name) { return SortKey(name, LOCALE_USER_DEFAULT); });
}

void GetProgInstallDirStr(wchar_t* program, uint32_t programSize, wchar_t* directory, uint32_t directorySize) {
  if (directory == nullptr || directorySize == 0) return;
  const size_t length = program != nullptr ? wcsnlen(program, programSize) : 0;
  std::wstring folder = FolderOfFile(WithoutQuotes({program, length}));
  folder.resize(std::min<size_t>(folder.size(), directorySize - 1));
  *std::ranges::copy(folder, directory).out = L'\0';
}

std::wstring GetRegistryString(std::wstring_view valuePath) {
  const RegistryPath parts = SplitRegistryPath(valuePath);
  const HKEY root = RootNamed(parts.root);
  std::wstring text;
  RegistryKey key;
  if (root == nullptr) {
    Log(LogLevel::Error, Format(L"{} names no value of the registry", valuePath));
  } else if (key.Open(root, parts.key, KEY_READ) == ERROR_SUCCESS) {
    key.ReadString(parts.value, text, {});
  }
  return text;
}

void SubstituteCommandLineStringS(std::wstring& text, std::wstring_view variable, std::wstring_view value,
                                  bool evenWhenEmpty) {
  if (!value.empty() || evenWhenEmpty) text = ReplaceVariable(text, variable, value);
}
