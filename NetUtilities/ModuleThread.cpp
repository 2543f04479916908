#include "NetUtilities/ModuleThread.h"

#include <windows.h>

#include <winternl.h>

#include <memory>
#include <utility>

extern "C" NTSYSAPI BOOLEAN NTAPI RtlDllShutdownInProgress();

namespace {

struct Start {
  std::function<void()> body;
  HMODULE module;
};

DWORD WINAPI Run(void* parameter) {
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
  if (GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<const wchar_t*>(&Run),
                         &start->module) == FALSE) {
    return GetLastError();
  }
  HANDLE thread = CreateThread(nullptr, 0, Run, start.get(), 0, nullptr);
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
