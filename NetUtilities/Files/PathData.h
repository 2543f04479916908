#pragma once

#include <windows.h>

#include <shtypes.h>

#include <atomic>
#include <string>

#include "NetUtilities/Module/Mutex.h"

/// The process-wide holder of the directories that the module needs, each computed on first request. Reached through
/// Singleton<PathData>; any thread may ask. Every path is empty when it cannot be determined, which is logged, and is
/// then tried again on the next request.
class PathData {
 public:
  /// With `impersonateConsoleUser` the user directory is that of the user at the machine's console.
  explicit PathData(bool impersonateConsoleUser = false) : impersonateConsoleUser_(impersonateConsoleUser) {}
  virtual ~PathData() = default;

  // Known folders of Windows, for this process's user, without a separator at the end.
  std::wstring GetWindowsFolder();
  std::wstring GetSystemFolder();
  std::wstring GetDesktopFolder();
  std::wstring GetProgramsFolder();  // of the Start menu
  std::wstring GetProgramFilesFolder();
  std::wstring GetProfileFolder();

  /// The folder of the client's executable, ending in a separator; for a process that is hosted from inside the System
  /// folder, what the registry names.
  std::wstring GetInstallPath();

  /// <ProgramData>\Ostrel\Wayline, shared by all users. It and its Data folder are created.
  std::wstring GetProgramDataPath();

  /// The folder of the settings: per user, or shared when the machine or the log-on desktop asks for that. It and its
  /// Data folder are created. With the test switch for it, it is the install folder, and empty when there is none.
  std::wstring GetUserDirectory();

  /// The Data folder of the user directory, where the settings database lies.
  std::wstring GetUserDataDirectory();

  /// Full path of the process's executable file.
  std::wstring GetExecutablePath();

  /// Full path of this module's own file.
  std::wstring GetModulePath();

  /// Whether all users of the machine share their settings; read once.
  bool IsSharedSettings();

  /// As ConsoleUserLocalAppData.
  std::wstring GetConsoleUserLocalAppData();

 private:
  std::wstring Read(const std::wstring& field) const;
  bool Fill(std::wstring& field, const std::wstring& text);
  template <typename Compute>
  std::wstring GetOrCompute(std::wstring& field, Compute compute);
  std::wstring GetKnownFolder(std::wstring& field, const KNOWNFOLDERID& folder, const wchar_t* failure);
  std::wstring FindUserDirectory();
  std::wstring BaseOfUserDirectory();

  const bool impersonateConsoleUser_;

  // Guards the paths below. It is held while one is copied and never while anything else is called, so that every
  // operation may call any other, and log. Two threads may work out the same path; they get the same.
  mutable Mutex mutex_;
  std::wstring windowsFolder_;
  std::wstring systemFolder_;
  std::wstring desktopFolder_;
  std::wstring programsFolder_;
  std::wstring programFilesFolder_;
  std::wstring profileFolder_;
  std::wstring installPath_;
  std::wstring programDataPath_;
  std::wstring userDirectory_;
  std::wstring executablePath_;
  std::wstring modulePath_;

  std::atomic<bool> sharedSettingsRead_{false};
  std::atomic<bool> sharedSettings_{false};
};
