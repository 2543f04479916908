#include "NetUtilities/Files/IniFile.h"

#include <filesystem>

#include "NetUtilities/Files/IniText.h"
#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Module/Singleton.h"

std::wstring IniFile::GetString(std::wstring_view section, std::wstring_view key, std::wstring_view defaultValue) {
  const auto paths = Singleton<PathData>::Get();
  const std::wstring folder = paths ? paths->GetProgramDataPath() : std::wstring();
  if (folder.empty()) return std::wstring(defaultValue);
  const TextFileCache::Text text = files_.TextOf(std::filesystem::path(folder) / kTestingIniFile);
  return FindIniValue(*text, section, key).value_or(std::wstring(defaultValue));
}

bool IniFile::GetBool(std::wstring_view section, std::wstring_view key) {
  return IsIniSwitchOn(GetString(section, key, L"0"));
}
