#include "NetUtilities/Logger/FileLogger.h"

#include <fcntl.h>
#include <share.h>

#include <filesystem>
#include <sys/stat.h>
#include <utility>

#include "NetUtilities/ErrnoText.h"
#include "NetUtilities/ErrorText.h"
#include "NetUtilities/Format.h"
#include "NetUtilities/Logger/LogOutputHelper.h"
#include "NetUtilities/OwnModule.h"
#include "NetUtilities/PathData.h"
#include "NetUtilities/Singleton.h"
#include "NetUtilities/TraceFlags.h"

FileLogPlatform fileLogPlatform;

namespace {

void ReportToDebugger(const std::wstring& message) { LogOutputHelper::GetLogOutput(LogOutput::Debugger)(message); }

std::wstring ProgramDataPath() {
  const auto paths = Singleton<PathData>::Get();
  return paths ? paths->GetProgramDataPath() : std::wstring();
}

bool Exists(const std::wstring& file) {
  std::error_code ignored;
  return !file.empty() && std::filesystem::exists(file, ignored);
}

// Owns the mutex that all processes share while it lives. Without a mutex it does nothing.
class FileLock {
 public:
  explicit FileLock(HANDLE mutex) : mutex_(mutex) {
    if (mutex_ != nullptr) WaitForSingleObject(mutex_, INFINITE);
  }
  ~FileLock() {
    if (mutex_ != nullptr) ReleaseMutex(mutex_);
  }
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

 private:
  HANDLE mutex_;
};

}  // namespace

FileLogger::FileLogger()
    : directory_(ProgramDataPath()),
      moduleName_(ModuleFileName(OwnModule())),
      baseName_(OwnModuleBaseName()),
      fileMutex_(fileLogPlatform.createMutex(nullptr, FALSE, L"TarnFileLogger")) {
  if (!fileMutex_) {
    ReportToDebugger(L"LoggerBase::LoggerBase() OpenMutex" + ErrorSuffix(static_cast<int32_t>(GetLastError())));
  }
}

// There is no thread any more: it keeps the object alive.
FileLogger::~FileLogger() {
  if (day_ != 0 && enabled_ && !threadPlatform.processEnds()) WriteNow(EndLine());
}

void FileLogger::Write(std::wstring line) {
  std::call_once(started_, [this] { Start(); });
  Queue(std::move(line));
}

void FileLogger::Start() {
  for (std::wstring& line : RollOver().begin) Queue(std::move(line));
}

void FileLogger::Queue(std::wstring line) {
  if (const uint32_t code = Push(std::move(line)); code != 0) {
    const auto error = static_cast<int32_t>(code);
    ReportToDebugger(Format(L"Unable to create FileLogger thread '{}'{}", SystemErrorText(code), ErrorSuffix(error)));
  }
}

void FileLogger::Deliver(std::deque<std::wstring>& lines) {
  for (const std::wstring& line : lines) {
    if (enabled_) WriteNow(line);
  }
}

void FileLogger::WriteNow(const std::wstring& line) {
  const FileLock lock(fileMutex_.get());
  if (IsDebugOutputEnabled()) OutputDebugStringW(line.c_str());
  const std::wstring previous = file_;
  const Frame frame = RollOver();
  if (frame.endsPrevious) AppendTo(previous, EndLine());
  for (const std::wstring& first : frame.begin) AppendTo(file_, first);
  AppendTo(file_, line);
}

FileLogger::Frame FileLogger::RollOver() {
  SYSTEMTIME date{};
  fileLogPlatform.localTime(&date);
  // Only the day of the month is compared: a process that writes nothing for a month keeps its file.
  if (date.wDay == day_) return {};
  day_ = date.wDay;
  Frame frame;
  frame.endsPrevious = Exists(file_);
  const std::wstring name = Format(L"{}_{:04}-{:02}-{:02}.log", baseName_, date.wYear, date.wMonth, date.wDay);
  file_ = (std::filesystem::path(directory_) / name).wstring();
  if (Exists(file_)) frame.begin.emplace_back(L"\n");
  frame.begin.push_back(Format(L"Begin Log - {}\n", moduleName_));
  return frame;
}

std::wstring FileLogger::EndLine() const { return Format(L"End Log - {}\n", moduleName_); }

void FileLogger::AppendTo(const std::wstring& file, const std::wstring& line) const {
  int descriptor = -1;
  const errno_t code =
      fileLogPlatform.openFile(&descriptor, file.c_str(), _O_WRONLY | _O_APPEND | _O_CREAT | _O_TEXT | _O_U8TEXT,
                               _SH_DENYWR, _S_IREAD | _S_IWRITE);
  if (code != 0) {
    ReportToDebugger(Format(L"Error opening log file: {} - {}", file, ErrnoText(code)));
    return;
  }
  _write(descriptor, line.data(), static_cast<unsigned>(line.size() * sizeof(wchar_t)));
  _close(descriptor);
}
