#pragma once

#include <windows.h>

#include <shtypes.h>

#include <filesystem>
#include <string>

/// A folder of its own in a start menu, which is removed with all that is in it when this object ends. What cannot be
/// made is thrown as std::runtime_error.
class StartMenuFolder {
 public:
  /// `menu` is the Programs folder of the user or of all users, as the system names it.
  explicit StartMenuFolder(const KNOWNFOLDERID& menu);
  ~StartMenuFolder();
  StartMenuFolder(const StartMenuFolder&) = delete;
  StartMenuFolder& operator=(const StartMenuFolder&) = delete;

  /// Adds the link `name`, without an extension.
  void AddLink(const std::wstring& name, const std::wstring& target, const std::wstring& parameters = {}) const;

  /// Adds so many links to a program, with the parameters 1000, 1001 and so on, as copies of one: to make each would
  /// take seconds in all.
  void AddLinks(const std::wstring& name, const std::wstring& target, int count) const;

  /// Adds a file with these bytes, and the folders in its name.
  void AddFile(const std::wstring& name, const std::string& bytes) const;

 private:
  std::filesystem::path path_;
};
