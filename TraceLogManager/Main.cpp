// TraceLogManager.exe: the logging service of the client. COM starts it to serve; a person, to set it up and to watch
// the log.

#include <windows.h>

#include <iostream>
#include <string>
#include <vector>

#include "NetUtilities/CommandLine/CommandLineProgram.h"
#include "NetUtilities/CommandLine/Utf8Console.h"
#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Logger/LogOutputHelper.h"
#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Text/ErrorText.h"
#include "TraceLogManager/DailyLogFile.h"
#include "TraceLogManager/LevelReport.h"
#include "TraceLogManager/LevelSettings.h"
#include "TraceLogManager/LogFollower.h"
#include "TraceLogManager/Registration.h"
#include "TraceLogManager/Server.h"
#include "TraceLogManager/ServiceOptions.h"

namespace {

// While it lives, Ctrl+C does not end the program at once but is seen by WaitFor.
class Interruption {
 public:
  Interruption() {
    pressed_.reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    SetConsoleCtrlHandler(OnControl, TRUE);
  }
  ~Interruption() { SetConsoleCtrlHandler(OnControl, FALSE); }
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  /// Waits for Ctrl+C; false when it has not come within the time.
  static bool WaitFor(DWORD milliseconds) { return WaitForSingleObject(pressed_.get(), milliseconds) == WAIT_OBJECT_0; }

 private:
  static BOOL WINAPI OnControl(DWORD event) {
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) return FALSE;
    SetEvent(pressed_.get());
    return TRUE;
  }

  inline static Handle pressed_;
};

// What failed, why, and what to do about it.
int FailWithRemedy(const std::wstring& what, LONG code, const std::wstring& remedy) {
  if (code == ERROR_ACCESS_DENIED) return Fail(what + L": access is denied. " + remedy);
  return Fail(what + L"." + ErrorSuffix(code));
}

int ChangeRegistration(const ServiceOptions& options) {
  const bool registers = options.action == ServiceOptions::Action::Register;
  const std::wstring program = Singleton<PathData>::Get()->GetExecutablePath();
  const LONG code = registers ? RegisterService(options.scope, program) : UnregisterService(options.scope);
  if (code == ERROR_SUCCESS) return kSuccess;
  return FailWithRemedy(
      registers ? L"The service cannot be registered" : L"The registration of the service cannot be removed", code,
      L"Use an administrator's command prompt, or the option --user for the current user alone.");
}

int ShowLevels() {
  const DailyLogFile logFile([] { return Singleton<PathData>::Get()->GetProgramDataPath(); }, LocalDate);
  SourceLevels levels{};
  for (uint32_t source = 0; source < levels.size(); ++source) levels[source] = ReadSourceLevel(source);
  std::cout << LevelReport(ReadGlobalLevel(), levels, logFile.Path());
  return kSuccess;
}

int ChangeLevels(const ServiceOptions& options) {
  LONG code = options.globalLevel ? WriteGlobalLevel(*options.globalLevel) : ERROR_SUCCESS;
  for (const auto& [source, level] : options.sourceLevels) {
    if (code == ERROR_SUCCESS) code = WriteSourceLevel(source, level);
  }
  if (code != ERROR_SUCCESS) {
    return FailWithRemedy(L"The level cannot be set", code, L"Use an administrator's command prompt.");
  }
  return options.show ? ShowLevels() : kSuccess;
}

// Ends with Ctrl+C, or when nobody reads any more what is printed.
int FollowLog(const ServiceOptions& options) {
  constexpr DWORD kPollMilliseconds = 200;
  const std::wstring folder = Singleton<PathData>::Get()->GetProgramDataPath();
  if (folder.empty()) return Fail(L"The folder of the log files cannot be determined.");
  LogFollower follower(folder, LocalDate, options.filter);
  const Interruption interruption;
  do {
    for (const std::string& line : follower.Next()) std::cout << line << '\n';
    std::cout.flush();
  } while (std::cout && !Interruption::WaitFor(kPollMilliseconds));
  return kSuccess;
}

int Run(const ServiceOptions& options) {
  switch (options.action) {
    case ServiceOptions::Action::Register:
    case ServiceOptions::Action::Unregister:
      return ChangeRegistration(options);
    case ServiceOptions::Action::Levels:
      return ChangeLevels(options);
    case ServiceOptions::Action::Tail:
      return FollowLog(options);
  }
  return kFailed;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  // The log of this program would be itself.
  logHandler = [](LogSource, LogLevel, std::wstring_view message) {
    LogOutputHelper::GetLogOutput(LogOutput::Debugger)(message);
  };
  const std::vector<std::wstring> list(arguments + 1, arguments + count);
  if (IsStartedByCom(list)) {
    // A console that Windows has made for this process closes with that.
    FreeConsole();
    return SUCCEEDED(RunServer()) ? kSuccess : kFailed;
  }
  const Utf8Console console;
  const CommandLine<ServiceOptions> commandLine = ParseServiceCommandLine(list);
  return AnswerOrRun(L"TraceLogManager", commandLine.answer, [&] { return Run(commandLine.options); });
}
