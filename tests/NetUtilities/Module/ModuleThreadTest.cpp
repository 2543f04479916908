#include "NetUtilities/Module/ModuleThread.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <atomic>
#include <memory>

#include "NetUtilities/Module/ModuleThreadPlatform.h"
#include "tests/programs/LoggingModule.h"
#include "tests/support/FaultPlan.h"
#include "tests/support/LoadedModule.h"
#include "tests/support/ResourceCounters.h"
#include "tests/support/Substituted.h"
#include "tests/support/ThreadFaults.h"
#include "tests/support/WaitUntil.h"

namespace {

constexpr wchar_t kModule[] = L"LoggingModule.dll";

std::atomic<int> received;

TEST(ModuleThread, RunsItsBodyOnceOnAnotherThread) {
  std::atomic<DWORD> ranOn = 0;
  EXPECT_EQ(threadPlatform.start([&] { ranOn = GetCurrentThreadId(); }), 0u);
  EXPECT_TRUE(WaitUntil([&] { return ranOn != 0; }));
  EXPECT_NE(ranOn, GetCurrentThreadId());
}

TEST(ModuleThread, LetsGoOfItsBodyInTheEnd) {
  const auto held = std::make_shared<int>();
  EXPECT_EQ(threadPlatform.start([held] {}), 0u);
  EXPECT_TRUE(WaitUntil([&] { return held.use_count() == 1; }));
}

TEST(ModuleThread, ThatCannotBeStartedTellsWhyAndLeavesNothing) {
  const Substituted platform(moduleThreadPlatform);
  const auto held = std::make_shared<int>();
  const size_t handles = CountKernelHandles();

  platform->createThread = [](LPSECURITY_ATTRIBUTES, SIZE_T, LPTHREAD_START_ROUTINE, LPVOID, DWORD, LPDWORD) -> HANDLE {
    return SetLastError(ERROR_NOT_ENOUGH_MEMORY), nullptr;
  };
  EXPECT_EQ(threadPlatform.start([held] { FAIL(); }), DWORD{ERROR_NOT_ENOUGH_MEMORY});
  EXPECT_EQ(held.use_count(), 1);

  platform->moduleHandle = [](DWORD, LPCWSTR, HMODULE*) -> BOOL { return SetLastError(ERROR_MOD_NOT_FOUND), FALSE; };
  EXPECT_EQ(threadPlatform.start([held] { FAIL(); }), DWORD{ERROR_MOD_NOT_FOUND});
  EXPECT_EQ(held.use_count(), 1);

  EXPECT_EQ(CountKernelHandles(), handles);
}

// A module logs two messages while the calls that start its thread fail, and is unloaded at once: nothing but a thread
// that runs may keep it.
class ModuleThreadFaults : public testing::TestWithParam<FaultPlan::Mode> {};

TEST_P(ModuleThreadFaults, DoNotKeepTheModuleLoadedAndLoseNothingWithoutNeed) {
  constexpr int kMessages = 2;
  bool hit = true;
  for (int call = 1; hit; ++call) {
    SCOPED_TRACE(call);
    ASSERT_LE(call, 10);
    received = 0;
    {
      const LoadedModule module(kModule);
      ASSERT_NE(module.Handle(), nullptr);
      module.Find<decltype(&SendLinesTo)>("SendLinesTo")([](const wchar_t*) { ++received; });
      module.Find<decltype(&SendReportsTo)>("SendReportsTo")([](const wchar_t*) {});
      module.Find<decltype(&PlanThreadFault)>("PlanThreadFault")(call, GetParam() == FaultPlan::Mode::Once);
      module.Find<decltype(&LogNumbers)>("LogNumbers")(1, 2, L"message", kMessages);
      hit = module.Find<decltype(&WasThreadFaultHit)>("WasThreadFaultHit")();
    }
    EXPECT_TRUE(WaitUntil([] { return GetModuleHandleW(kModule) == nullptr; }));
    EXPECT_EQ(received, hit && GetParam() == FaultPlan::Mode::FromThenOn ? 0 : kMessages);
  }
}

INSTANTIATE_TEST_SUITE_P(Fault, ModuleThreadFaults, testing::Values(FaultPlan::Mode::Once, FaultPlan::Mode::FromThenOn),
                         [](const auto& mode) { return mode.param == FaultPlan::Mode::Once ? "Once" : "FromThenOn"; });

}  // namespace
