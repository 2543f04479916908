// Loading and unloading a module that logs: nothing hangs, nothing that was queued is lost, nothing is left. The module
// starts and stops as the product does. Its messages go to the test, or to the real logging service.

#include <windows.h>

#include <gmock/gmock.h>
#include <tlhelp32.h>

#include <atomic>
#include <chrono>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Text/Format.h"
#include "tests/programs/LoggingModule.h"
#include "tests/support/ClientProcess.h"
#include "tests/support/Endurance.h"
#include "tests/support/LoadedModule.h"
#include "tests/support/NumberedMessages.h"
#include "tests/support/RegisteredService.h"
#include "tests/support/ResourceCounters.h"
#include "tests/support/ServiceLog.h"
#include "tests/support/WaitUntil.h"

namespace {

using testing::Each;
using testing::Pair;
using testing::SizeIs;

constexpr wchar_t kModule[] = L"LoggingModule.dll";
constexpr int kThreads = 4;
constexpr int kManyRounds = 50;

enum class Target { Test, Service };

std::atomic<int> received;

// The module, loaded once more for as long as this lives.
class Module {
 public:
  explicit Module(Target target) {
    EXPECT_NE(module_.Handle(), nullptr);
    if (target == Target::Test) {
      module_.Find<decltype(&SendLinesTo)>("SendLinesTo")([](const wchar_t*) { ++received; });
    }
  }

  void Log(const std::wstring& name, int count) const {
    module_.Find<decltype(&LogNumbers)>("LogNumbers")(1, 2, name.c_str(), count);
  }

 private:
  const LoadedModule module_{kModule};
};

// The module stays until all is delivered.
bool IsUnloaded() {
  return WaitUntil([] { return GetModuleHandleW(kModule) == nullptr; }, std::chrono::minutes(10));
}

int ThreadCount() {
  int count = 0;
  const Handle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
  THREADENTRY32 entry{};
  entry.dwSize = sizeof(entry);
  for (BOOL more = Thread32First(snapshot.get(), &entry); more != FALSE; more = Thread32Next(snapshot.get(), &entry)) {
    if (entry.th32OwnerProcessID == GetCurrentProcessId()) ++count;
  }
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

// Lets go of the module while threads that have loaded it log; each of them, and this one, so many messages.
void LogInThreads(Target target, int count) {
  std::vector<std::thread> threads;
  {
    const Module module(target);
    for (int thread = 0; thread < kThreads; ++thread) {
      threads.emplace_back([=] { Module(target).Log(L"unload thread " + std::to_wstring(thread), count); });
    }
    module.Log(L"unload main", count);
  }
  for (std::thread& thread : threads) thread.join();
}

class ModuleUnload : public testing::TestWithParam<std::tuple<Target, int>> {
 protected:
  static void SetUpTestSuite() {
    registration.emplace();
    // Keeps the server, which would otherwise end at a moment when a test needs one: under Wine that is no good moment.
    const ServiceLog log;
    otherClient.emplace(L"other 1 1 stay");
    EXPECT_TRUE(log.Has("other 0 0"));
  }
  static void TearDownTestSuite() {
    otherClient.reset();
    // Some clients did not say that they would go. Under Wine a server waits for them for ever.
    RegisteredService::KillServers();
    registration.reset();
  }

  ModuleUnload() {
    // What the system makes for the first use, and keeps.
    for (int round = 0; round < 3; ++round) {
      LogInThreads(ItsTarget(), 1);
      EXPECT_TRUE(IsUnloaded());
    }
  }

  static Target ItsTarget() { return std::get<Target>(GetParam()); }
  static int Count() { return std::get<int>(GetParam()); }

  // A message costs the service much more than the test.
  static int Rounds() {
    if (ItsTarget() == Target::Test || FullSize()) return kManyRounds;
    return Count() < 1'000 ? 8 : 1;
  }

  static std::optional<RegisteredService> registration;
  static std::optional<ClientProcess> otherClient;
};

std::optional<RegisteredService> ModuleUnload::registration;
std::optional<ClientProcess> ModuleUnload::otherClient;

// Knows what has been delivered since its beginning.
class Delivery {
 public:
  explicit Delivery(Target target) : target_(target) { received = 0; }

  // So many messages of each of so many names have come, in order.
  void Is(size_t names, int count) const {
    if (target_ == Target::Test) {
      EXPECT_EQ(received, static_cast<int>(names) * count);
      return;
    }
    const std::map<std::string, int> counts = CountNumberedMessages(log_.Text(), "unload ");
    EXPECT_THAT(counts, SizeIs(names));
    EXPECT_THAT(counts, Each(Pair(testing::_, count)));
  }

 private:
  Target target_;
  ServiceLog log_;
};

TEST_P(ModuleUnload, AtOnceAfterTheMessages) {
  const NothingIsLeft check;
  for (int round = 1; round <= Rounds(); ++round) {
    const Delivery delivery(ItsTarget());
    Module(ItsTarget()).Log(L"unload", Count());
    ASSERT_TRUE(IsUnloaded());
    delivery.Is(1, Count());
  }
}

TEST_P(ModuleUnload, AMomentAfterTheMessages) {
  const NothingIsLeft check;
  for (int round = 1; round <= Rounds(); ++round) {
    const Delivery delivery(ItsTarget());
    {
      const Module module(ItsTarget());
      module.Log(L"unload", Count());
      // From round to round the thread still works, is about to rest, and has been at rest for a while.
      constexpr DWORD kStepMilliseconds = 10;
      Sleep(kStepMilliseconds * static_cast<DWORD>(round % 8));
    }
    ASSERT_TRUE(IsUnloaded());
    delivery.Is(1, Count());
  }
}

TEST_P(ModuleUnload, InALoopThatDoesNotWait) {
  const NothingIsLeft check;
  const Delivery delivery(ItsTarget());
  for (int round = 1; round <= Rounds(); ++round) Module(ItsTarget()).Log(L"unload " + std::to_wstring(round), Count());
  ASSERT_TRUE(IsUnloaded());
  delivery.Is(static_cast<size_t>(Rounds()), Count());
}

TEST_P(ModuleUnload, WhileOtherThreadsThatHaveLoadedItLog) {
  const NothingIsLeft check;
  constexpr int kLoggers = kThreads + 1;
  // As many in all as in the other tests, but for the recorder, which is fast enough for as many of each thread.
  const int count = ItsTarget() == Target::Test ? Count() : (Count() + kLoggers - 1) / kLoggers;
  for (int round = 1; round <= Rounds(); ++round) {
    const Delivery delivery(ItsTarget());
    LogInThreads(ItsTarget(), count);
    ASSERT_TRUE(IsUnloaded());
    delivery.Is(kLoggers, count);
  }
}

TEST_P(ModuleUnload, ByTheEndOfTheProcess) {
  // The process ends with messages in the queue, and nobody unloads the module.
  constexpr size_t kAtOnce = 4;
  const ServiceLog log;
  std::deque<ClientProcess> processes;
  const auto waitForOne = [&processes] {
    EXPECT_EQ(processes.front().WaitForEnd(), ClientProcess::kDone);
    processes.pop_front();
  };
  const bool toService = ItsTarget() == Target::Service;
  for (int process = 0; process < Rounds(); ++process) {
    if (processes.size() == kAtOnce) waitForOne();
    processes.emplace_back(Format(L"end-{} 1 {} keep-module {}", process, Count(), toService ? L"" : L"no-service"));
  }
  while (!processes.empty()) waitForOne();
  // What has arrived is whole and in order.
  CountNumberedMessages(log.Text(), "end-");
}

INSTANTIATE_TEST_SUITE_P(Queued, ModuleUnload,
                         testing::Combine(testing::Values(Target::Test, Target::Service),
                                          testing::Values(1, 100, 5'000)),
                         [](const auto& test) {
                           return std::to_string(std::get<int>(test.param)) +
                                  (std::get<Target>(test.param) == Target::Test ? "ForTheTest" : "ForTheService");
                         });

}  // namespace
