#include "NetUtilities/IniFile.h"

#include <fstream>
#include <iterator>
#include <system_error>

#include "NetUtilities/IniText.h"
#include "NetUtilities/PathData.h"
#include "NetUtilities/Singleton.h"
#include "NetUtilities/Text.h"

std::wstring IniFile::GetString(std::wstring_view section, std::wstring_view key, std::wstring_view defaultValue) {
  const auto paths = Singleton<PathData>::Get();
  if (!paths) return std::wstring(defaultValue);
  const std::filesystem::path file = std::filesystem::path(paths->GetProgramDataPath()) / L"Testing.ini";
  const std::scoped_lock lock(mutex_);
  return FindIniValue(TextOf(file), section, key).value_or(std::wstring(defaultValue));
}

bool IniFile::GetBool(std::wstring_view section, std::wstring_view key) {
  return IsIniSwitchOn(GetString(section, key, L"0"));
}

const std::wstring& IniFile::TextOf(const std::filesystem::path& path) {
  std::error_code error;
  const auto lastWrite = std::filesystem::last_write_time(path, error);
  Copy& copy = copies_[path];
  if (error) {
    copy = {};
  } else if (copy.lastWrite != lastWrite) {
    std::ifstream stream(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    const std::string_view text = bytes;
    copy = {lastWrite, FromUtf8(text.substr(text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0))};
  }
  return copy.text;
}
