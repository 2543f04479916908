#pragma once

#include <string>
#include <string_view>

#include "NetUtilities/Files/TextFileCache.h"

/// The file of the switches, in the program-data folder.
inline constexpr wchar_t kTestingIniFile[] = L"Testing.ini";

/// The switches for support and test staff: "Testing.ini" in the program-data folder, read again when it has changed.
/// Reached through Singleton<IniFile>; any thread may ask.
class IniFile {
 public:
  /// The value text of `key` in `section`, or `defaultValue` when the file, the section or the key is missing.
  std::wstring GetString(std::wstring_view section, std::wstring_view key, std::wstring_view defaultValue);

  /// Whether a switch is on; a missing one is off.
  bool GetBool(std::wstring_view section, std::wstring_view key);

 private:
  TextFileCache files_;
};
