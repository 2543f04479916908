// Faults in a module that logs: see LoggingModule.h.

#include "tests/support/ThreadFaults.h"

#include "NetUtilities/Module/ModuleThreadPlatform.h"
#include "tests/support/FaultPlan.h"

namespace {

FaultPlan plan;

}  // namespace

extern "C" {

void PlanThreadFault(int call, bool once) {
  plan.Arm(call, once ? FaultPlan::Mode::Once : FaultPlan::Mode::FromThenOn);
  moduleThreadPlatform.moduleHandle = [](DWORD flags, LPCWSTR name, HMODULE* module) -> BOOL {
    if (!plan.Fails()) return GetModuleHandleExW(flags, name, module);
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  };
  moduleThreadPlatform.createThread = [](LPSECURITY_ATTRIBUTES attributes, SIZE_T stack, LPTHREAD_START_ROUTINE start,
                                         LPVOID parameter, DWORD flags, LPDWORD id) -> HANDLE {
    if (!plan.Fails()) return CreateThread(attributes, stack, start, parameter, flags, id);
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  };
}

bool WasThreadFaultHit() { return plan.WasHit(); }

}  // extern "C"
