#include "NetUtilities/Logger/FileLogger.h"

#include <fcntl.h>
#include <share.h>

#include <filesystem>
#include <sys/stat.h>
#include <utility>

#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Logger/LogOutputHelper.h"
#include "NetUtilities/Module/OwnModule.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Registry/TraceFlags.h"
#include "NetUtilities/Text/ErrnoText.h"
#include "NetUtilities/Text/ErrorText.h"
#include "NetUtilities/Text/Format.h"

FileLogPlatform fileLogPlatform;

namespace {

void ReportToDebugger(const std::wstring& message) { LogOutputHelper::GetLogOutput(LogOutput::Debugger)(message); }

std::wstring ProgramDataPath() {
  const auto paths = Singleton<PathData>::Get();
  return paths ? paths->GetProgramDataPath() : std::wstring();
}

// As it is written, without the mark of other messages.
void PassToDebugger(const std::wstring& line) {
  if (IsDebugOutputEnabled()) OutputDebugStringW(line.c_str());
}

bool Exists(const std::wstring& file) {
  std::error_code ignored;
  return !file.empty() && std::filesystem::exists(file, ignored);
}

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { _close(number_); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int Number() const { return number_; }

 private:
  int number_;
};

void Append(const std::wstring& file, const std::wstring& line) {
  int opened = -1;
  const errno_t code = fileLogPlatform.openFile(
      &opened, file.c_str(), _O_WRONLY | _O_APPEND | _O_CREAT | _O_TEXT | _O_U8TEXT, _SH_DENYWR, _S_IREAD | _S_IWRITE);
  if (code != 0) {
    ReportToDebugger(Format(L"Error opening log file: {} - {}", file, ErrnoText(code)));
    return;
  }
  const Descriptor descriptor(opened);
  // A line that cannot be written, to a disk that is full, is lost without a word.
  fileLogPlatform.writeFile(descriptor.Number(), line.data(), static_cast<unsigned>(line.size() * sizeof(wchar_t)));
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

// There is no thread any more: it keeps the object alive. If none could be started, its lines are still there.
FileLogger::~FileLogger() {
  if (day_ == 0 || threadPlatform.processEnds()) return;
  std::deque<std::wstring> lines = TakeUndelivered();
  lines.push_back(EndLine());
  FileLogger::Deliver(lines);
}

void FileLogger::Write(std::wstring line) {
  std::call_once(started_, [this] { Start(); });
  const uint32_t code = Push([&line](std::deque<std::wstring>& lines) { lines.push_back(std::move(line)); });
  if (code == 0) return;
  const auto error = static_cast<int32_t>(code);
  ReportToDebugger(Format(L"Unable to create FileLogger thread '{}'{}", SystemErrorText(code), ErrorSuffix(error)));
}

void FileLogger::Start() {
  std::vector<FrameLine> frame = RollOver();
  const auto add = [&frame](std::deque<std::wstring>& lines) {
    for (FrameLine& line : frame) lines.push_back(std::move(line.text));
  };
  // The line that comes next starts the thread for these too.
  Push(add, false);
}

void FileLogger::Deliver(std::deque<std::wstring>& lines) {
  for (const std::wstring& line : lines) {
    if (enabled_) WriteNow(line);
  }
}

void FileLogger::WriteNow(const std::wstring& line) {
  const FileLock lock(fileMutex_.get());
  PassToDebugger(line);
  for (const FrameLine& frame : RollOver()) {
    PassToDebugger(frame.text);
    Append(frame.file, frame.text);
  }
  Append(file_, line);
}

std::vector<FileLogger::FrameLine> FileLogger::RollOver() {
  SYSTEMTIME date{};
  fileLogPlatform.localTime(&date);
  // Only the day of the month is compared: a process that writes nothing for a month keeps its file.
  if (date.wDay == day_) return {};
  day_ = date.wDay;
  std::vector<FrameLine> frame;
  if (Exists(file_)) frame.push_back({file_, EndLine()});
  const std::wstring name = Format(L"{}_{:04}-{:02}-{:02}.log", baseName_, date.wYear, date.wMonth, date.wDay);
  file_ = (std::filesystem::path(directory_) / name).wstring();
  if (Exists(file_)) frame.push_back({file_, L"\n"});
  frame.push_back({file_, Format(L"Begin Log - {}\n", moduleName_)});
  return frame;
}

std::wstring FileLogger::EndLine() const { return Format(L"End Log - {}\n", moduleName_); }
