#include "NetUtilities/Module/ModuleThread.h"

#include <windows.h>

#include <winternl.h>

#include <memory>
#include <utility>

#include "NetUtilities/Module/ModuleThreadPlatform.h"

extern "C" NTSYSAPI BOOLEAN NTAPI RtlDllShutdownInProgress();

ModuleThreadPlatform moduleThreadPlatform;

namespace {

struct Start {
  std::function<void()> body;
  HMODULE module;
};

// Nothing may leave it: an exception would be the system's to handle, and the process might go on for ever, unwinding.
DWORD WINAPI Run(void* parameter) noexcept {
  HMODULE module = nullptr;
  {
    const std::unique_ptr<Start> start(static_cast<Start*>(parameter));
    module = start->module;
    start->body();
  }
  // Lets go of the module and ends the thread in one step of the system: there may be no code to return to.
  FreeLibraryAndExitThread(module, 0);
}

uint32_t StartThread(std::function<void()> body) {
  auto start = std::make_unique<Start>(std::move(body), nullptr);
  if (moduleThreadPlatform.moduleHandle(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<const wchar_t*>(&Run),
                                        &start->module) == FALSE) {
    return GetLastError();
  }
  HANDLE thread = moduleThreadPlatform.createThread(nullptr, 0, Run, start.get(), 0, nullptr);
  if (thread == nullptr) {
    const DWORD code = GetLastError();
    FreeLibrary(start->module);
    return code;
  }
  start.release();  // NOLINT(bugprone-unused-return-value): the thread owns it now
  CloseHandle(thread);
  return ERROR_SUCCESS;
}

}  // namespace

ThreadPlatform threadPlatform = {StartThread, [] { return RtlDllShutdownInProgress() != FALSE; }};
