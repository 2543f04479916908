// Loading and unloading a module that logs: nothing hangs, nothing that was queued is lost, nothing is left. The module
// starts and stops as the product does.

#include <windows.h>

#include <gtest/gtest.h>
#include <tlhelp32.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/LoggingModule.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/ResourceCounters.h"
#include "tests/support/WaitUntil.h"

namespace {

constexpr wchar_t kModule[] = L"LoggingModule.dll";
constexpr int kRounds = 50;
constexpr int kThreads = 4;

std::atomic<int> received;

// The module, loaded once more for as long as this lives.
class LoggingModule {
 public:
  LoggingModule() : module_(LoadLibraryW(kModule)) {
    EXPECT_NE(module_, nullptr);
    Function<decltype(SendLinesTo)>("SendLinesTo")([](const wchar_t*) { ++received; });
  }
  ~LoggingModule() { FreeLibrary(module_); }
  LoggingModule(const LoggingModule&) = delete;
  LoggingModule& operator=(const LoggingModule&) = delete;

  void Log(int count) const { Function<decltype(LogNumbers)>("LogNumbers")(L"message", count); }

 private:
  template <typename Signature>
  Signature* Function(const char* name) const {
    return reinterpret_cast<Signature*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
  }

  HMODULE module_;
};

bool IsUnloaded() {
  return WaitUntil([] { return GetModuleHandleW(kModule) == nullptr; });
}

int ThreadCount() {
  int count = 0;
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  THREADENTRY32 entry{};
  entry.dwSize = sizeof(entry);
  for (BOOL more = Thread32First(snapshot, &entry); more != FALSE; more = Thread32Next(snapshot, &entry)) {
    if (entry.th32OwnerProcessID == GetCurrentProcessId()) ++count;
  }
  CloseHandle(snapshot);
  return count;
}

// What the process has of threads and handles, to be the same again.
class NothingIsLeft {
 public:
  NothingIsLeft() : threads_(ThreadCount()), handles_(CountKernelHandles()) {}
  ~NothingIsLeft() {
    EXPECT_TRUE(WaitUntil([this] { return ThreadCount() <= threads_; })) << "A thread is left.";
    // The system may make one for itself. A leak would leave one behind in every round.
    constexpr size_t kSystemsOwn = 5;
    EXPECT_TRUE(WaitUntil([this] { return CountKernelHandles() <= handles_ + kSystemsOwn; }))
        << "Handles are left: " << CountKernelHandles() - handles_;
  }
  NothingIsLeft(const NothingIsLeft&) = delete;
  NothingIsLeft& operator=(const NothingIsLeft&) = delete;

 private:
  int threads_;
  size_t handles_;
};

// Lets go of the module while threads that have loaded it log.
void LogInThreads(int count) {
  std::vector<std::thread> threads;
  {
    const LoggingModule module;
    for (int thread = 0; thread < kThreads; ++thread) threads.emplace_back([count] { LoggingModule().Log(count); });
    module.Log(count);
  }
  for (std::thread& thread : threads) thread.join();
}

class ModuleUnload : public testing::TestWithParam<int> {
 protected:
  ModuleUnload() {
    received = 0;
    // What the system makes for the first use, and keeps.
    for (int round = 0; round < 3; ++round) {
      LogInThreads(1);
      EXPECT_TRUE(IsUnloaded());
    }
    received = 0;
  }
};

TEST_P(ModuleUnload, AtOnceAfterTheMessages) {
  const NothingIsLeft check;
  for (int round = 1; round <= kRounds; ++round) {
    {
      const LoggingModule module;
      module.Log(GetParam());
    }
    ASSERT_TRUE(IsUnloaded());
    ASSERT_EQ(received, round * GetParam());
  }
}

TEST_P(ModuleUnload, AMomentAfterTheMessages) {
  const NothingIsLeft check;
  for (int round = 1; round <= kRounds; ++round) {
    {
      const LoggingModule module;
      module.Log(GetParam());
      Sleep(200);  // the thread has gone to rest, or is about to
    }
    ASSERT_TRUE(IsUnloaded());
    ASSERT_EQ(received, round * GetParam());
  }
}

TEST_P(ModuleUnload, InALoopThatDoesNotWait) {
  const NothingIsLeft check;
  for (int round = 1; round <= kRounds; ++round) {
    const LoggingModule module;
    module.Log(GetParam());
  }
  ASSERT_TRUE(IsUnloaded());
  EXPECT_EQ(received, kRounds * GetParam());
}

TEST_P(ModuleUnload, WhileOtherThreadsThatHaveLoadedItLog) {
  const NothingIsLeft check;
  for (int round = 1; round <= kRounds; ++round) {
    LogInThreads(GetParam());
    ASSERT_TRUE(IsUnloaded());
    ASSERT_EQ(received, round * (kThreads + 1) * GetParam());
  }
}

TEST_P(ModuleUnload, ByTheEndOfTheProcess) {
  // The process ends with messages in the queue, and nobody unloads the module.
  constexpr int kProcesses = 10;
  for (int process = 0; process < kProcesses; ++process) {
    InOwnProcess([] {
      if (GetModuleHandleW(kModule) != nullptr) return;  // in the other process the loop goes round, too
      ASSERT_NE(LoadLibraryW(kModule), nullptr);
      LoggingModule().Log(GetParam());
    });
  }
}

INSTANTIATE_TEST_SUITE_P(Queued, ModuleUnload, testing::Values(1, 100, 5'000));

}  // namespace
