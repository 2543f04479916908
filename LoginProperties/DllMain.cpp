#include <windows.h>

#include "LoginProperties/V7WinApp.h"

namespace {

V7WinApp application;

}  // namespace

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void* processEnds) {
  switch (reason) {
    case DLL_PROCESS_ATTACH:
      return application.InitInstance(module) ? TRUE : FALSE;
    case DLL_PROCESS_DETACH:
      if (processEnds == nullptr) application.ExitInstance();
      return TRUE;
    default:
      return TRUE;
  }
}
