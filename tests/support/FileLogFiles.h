#pragma once

#include <windows.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <system_error>

#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Logger/FileLogger.h"
#include "NetUtilities/Module/OwnModule.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Text/ErrorText.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/FileBytes.h"

/// A day on which a FileLogger of a test writes.
struct LogDay {
  WORD year;
  WORD month;
  WORD day;

  SYSTEMTIME Time() const {
    SYSTEMTIME time{};
    time.wYear = year;
    time.wMonth = month;
    time.wDay = day;
    return time;
  }
};

// What stands in the files.
inline constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
inline std::string BeginLog() { return "Begin Log - " + ToUtf8(ModuleFileName(OwnModule())) + "\r\n"; }
inline std::string EndLog() { return "End Log - " + ToUtf8(ModuleFileName(OwnModule())) + "\r\n"; }

// What goes to the debugger when the platform fails.
inline std::string NoMutexReport(DWORD error) {
  return "TARN: LoggerBase::LoggerBase() OpenMutex" + ToUtf8(ErrorSuffix(static_cast<int32_t>(error))) + '\n';
}
inline std::string NoThreadReport(DWORD error) {
  return "TARN: Unable to create FileLogger thread '" + ToUtf8(SystemErrorText(error)) + '\'' +
         ToUtf8(ErrorSuffix(static_cast<int32_t>(error))) + '\n';
}
inline std::string NoFileReport(const std::filesystem::path& file, const std::string& reason) {
  return "TARN: Error opening log file: " + ToUtf8(file.wstring()) + " - " + reason + '\n';
}

/// The files of this program's FileLoggers.
namespace FileLogFiles {

inline std::filesystem::path Folder() { return Singleton<PathData>::Get()->GetProgramDataPath(); }

inline std::filesystem::path Of(const LogDay& day) {
  return Folder() / Format(L"{}_{:04}-{:02}-{:02}.log", OwnModuleBaseName(), day.year, day.month, day.day);
}

inline std::string TextOf(const LogDay& day) { return FileBytes(Of(day)); }

inline void RemoveAll() {
  for (const auto& file : std::filesystem::directory_iterator(Folder())) {
    std::error_code ignored;
    if (file.path().filename().wstring().starts_with(OwnModuleBaseName() + L"_")) remove(file.path(), ignored);
  }
}

}  // namespace FileLogFiles

/// Counts the loggers that are gone, with all that they had to write.
class EndOfFileLogger {
 public:
  ~EndOfFileLogger() { ++count_; }
  static int Count() { return count_; }

 private:
  static inline std::atomic<int> count_ = 0;
};

/// A FileLogger whose end, which may come in its own thread, can be waited for.
class ObservedFileLogger : private EndOfFileLogger, public FileLogger {
 public:
  ObservedFileLogger() { SetEnabled(true); }
};
