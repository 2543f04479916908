#pragma once

#include <windows.h>

#include <io.h>

#include <atomic>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Module/QueueThread.h"

/// Writes lines to a log file of the day that all processes of the client share, on a thread of its own. Reached
/// through Singleton<FileLogger>; always owned by a shared pointer. It is switched off at first: lines are then queued,
/// taken by the thread and dropped.
class FileLogger : public QueueThread<std::deque<std::wstring>> {
 public:
  FileLogger();
  ~FileLogger() override;

  /// Queues one line, with its line feed already in it, and returns at once. The first one starts the thread and
  /// chooses the file. Lines that are queued while the logger is switched off are lost.
  void Write(std::wstring line);

  void SetEnabled(bool enabled) { enabled_ = enabled; }

 private:
  // A line that begins or ends a file.
  struct FrameLine {
    std::wstring file;
    std::wstring text;
  };

  bool BeginThread() override { return true; }
  void Deliver(std::deque<std::wstring>& lines) override;
  void EndThread() override {}

  void Start();
  void WriteNow(const std::wstring& line);
  std::vector<FrameLine> RollOver();
  std::wstring EndLine() const;

  const std::wstring directory_;
  const std::wstring moduleName_;  // with extension
  const std::wstring baseName_;    // without
  const Handle fileMutex_;
  std::once_flag started_;
  std::atomic<bool> enabled_{false};

  // Touched by the first caller while there is no thread yet, and then by the thread alone.
  std::wstring file_;
  uint16_t day_ = 0;  // of the month; 0 before the first file
};

/// The platform's functions behind FileLogger. Tests put others in their place.
struct FileLogPlatform {
  decltype(&GetLocalTime) localTime = GetLocalTime;
  decltype(&CreateMutexW) createMutex = CreateMutexW;
  decltype(&_wsopen_s) openFile = _wsopen_s;
  decltype(&_write) writeFile = _write;
};

extern FileLogPlatform fileLogPlatform;
