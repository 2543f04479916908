#pragma once

#include <mutex>
#include <string>

/// The process-wide holder of the directories that the module needs, each computed on first request. Reached through
/// Singleton<PathData>. Every path is empty when it cannot be determined, and is then tried again on the next request.
class PathData {
 public:
  virtual ~PathData() = default;

  /// The folder of the client's executable, ending in a separator; for a process that is hosted from inside the System
  /// folder, what the registry names.
  std::wstring GetInstallPath();

  /// <ProgramData>\Ostrel\Wayline, shared by all users. It and its Data folder are created.
  std::wstring GetProgramDataPath();

  /// The folder of the settings: per user, or shared when the machine or the log-on desktop asks for that. It and its
  /// Data folder are created.
  std::wstring GetUserDirectory();

  /// The Data folder of the user directory, where the settings database lies.
  std::wstring GetUserDataDirectory();

  /// Full path of the process's executable file.
  std::wstring GetExecutablePath();

  /// Full path of this module's own file.
  std::wstring GetModulePath();

  /// Whether all users of the machine share their settings.
  bool IsSharedSettings();

 private:
  std::wstring KnownUserDirectory();
  std::wstring BaseOfUserDirectory();

  // Guards the four paths below. What is called while it is held must not take it.
  std::mutex mutex_;
  std::wstring programDataPath_;
  std::wstring userDirectory_;
  std::wstring userDataDirectory_;
  std::wstring modulePath_;
  std::wstring executablePath_;

  std::wstring installPath_;
  bool sharedSettingsRead_ = false;
  bool sharedSettings_ = false;
};

/// Whether the process runs on the Windows log-on desktop; determined once.
bool IsRunningInWinLogonDesktop();
