#pragma once

#include <string>
#include <vector>

#include "Database/SQLite/DatabasePlatform.h"

/// What a test sets on the made-up machine, and what it sees there.
struct FakeDatabaseState {
  bool tracing = false;
  bool firstInstance = false;  // what creating the mutex reports
  std::wstring userDataDirectory;
  std::vector<std::wstring> mutexNames;  // of the mutexes created so far
  int openMutexes = 0;
  std::vector<std::wstring> debuggerMessages;
};

/// While it lives, the database layer sees a made-up machine: process 0x1a2 of C:\host.exe, trace flags and
/// data folder as set here. One at a time.
class FakeDatabasePlatform {
 public:
  FakeDatabasePlatform() : previous_(databasePlatform) {
    state = {};
    databasePlatform = {
        [] { return uint32_t{0x1a2}; },
        [] { return std::wstring(L"C:\\host.exe"); },
        [] { return state.userDataDirectory; },
        MakeMutex,
        [](unsigned bit) { return state.tracing && bit == kDatabaseTraceFlag; },
        [](int32_t code) { return L" (suffix " + std::to_wstring(code) + L")"; },
        [](std::wstring_view message) { state.debuggerMessages.emplace_back(message); },
    };
  }
  ~FakeDatabasePlatform() { databasePlatform = previous_; }
  FakeDatabasePlatform(const FakeDatabasePlatform&) = delete;
  FakeDatabasePlatform& operator=(const FakeDatabasePlatform&) = delete;

  inline static FakeDatabaseState state;

 private:
  static InstanceMutex MakeMutex(const std::wstring& name) {
    state.mutexNames.push_back(name);
    ++state.openMutexes;
    return {{&state, [](void*) { --state.openMutexes; }}, state.firstInstance};
  }

  DatabasePlatform previous_;
};
