#pragma once

#include <array>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "NetUtilities/Logger/LogPlatform.h"
#include "NetUtilities/Module/ModuleThread.h"
#include "tests/support/Substituted.h"

/// The machine as the Logger sees it, while this lives: a logging service that remembers what it gets, a clock that is
/// set by hand, and local outputs that collect. One at a time. Change the settings only while no logger thread runs.
class FakeLogMachine {
 public:
  FakeLogMachine();
  ~FakeLogMachine();
  FakeLogMachine(const FakeLogMachine&) = delete;
  FakeLogMachine& operator=(const FakeLogMachine&) = delete;

  struct Sent {
    uint32_t source;
    uint16_t level;
    std::wstring text;
    bool operator==(const Sent&) const = default;
  };

  // What operations answer: HRESULTs, a system's error for the thread.
  uint32_t startResult = 0;
  int32_t enterResult = 0;
  int32_t connectResult = 0;
  int32_t globalLevelResult = 0;
  std::map<uint32_t, int32_t> sourceLevelResults;
  int32_t sendResult = 0;
  std::function<void()> whenSent = [] {};  // called on the logger thread

  uint16_t traceLevel = 4;
  uint16_t globalLevel = 4;
  std::array<uint16_t, 37> sourceLevels{};
  bool tracesLogger = false;  // bit 16 of the trace flags
  std::chrono::nanoseconds now{0};
  LogTime localTime{1, 3, 9, 5, 7, 4};
  uint64_t ticksPerReading = 1'000'000;  // so many that the local time is read each time

  std::vector<Sent> AllSent() const;
  std::vector<std::wstring> FileReports() const;
  std::vector<std::wstring> DebuggerReports() const;

  /// Waits until the service has been sent so many messages; false when that takes too long.
  bool WaitForSent(size_t count) const;

  // How often something has happened.
  struct Counts {
    int starts = 0;
    int enters = 0;
    int leaves = 0;
    int connections = 0;
    int disconnections = 0;
    int globalLevelQueries = 0;
    std::vector<uint32_t> sourceLevelQueries;
  };
  Counts Happened() const;

 private:
  class Service;
  template <typename Change>
  static void Note(Change change);

  const Substituted<LogPlatform> logPlatform_{logPlatform};
  const Substituted<ThreadPlatform> threadPlatform_{threadPlatform};
  mutable std::mutex mutex_;
  mutable std::condition_variable noted_;
  Counts counts_;
  std::vector<Sent> sent_;
  std::vector<std::wstring> fileReports_;
  std::vector<std::wstring> debuggerReports_;
};
