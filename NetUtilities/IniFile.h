#pragma once

#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

/// The switches for support and test staff: "Testing.ini" in the program-data folder, read again when it has changed.
/// Reached through Singleton<IniFile>.
class IniFile {
 public:
  /// The value text of `key` in `section`, or `defaultValue` when the file, the section or the key is missing.
  std::wstring GetString(std::wstring_view section, std::wstring_view key, std::wstring_view defaultValue);

  /// Whether a switch is on; a missing one is off.
  bool GetBool(std::wstring_view section, std::wstring_view key);

 private:
  struct Copy {
    std::filesystem::file_time_type lastWrite;
    std::wstring text;
  };

  const std::wstring& TextOf(const std::filesystem::path& path);

  std::mutex mutex_;
  std::map<std::filesystem::path, Copy> copies_;
};
