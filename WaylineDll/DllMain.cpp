#include <windows.h>

#include "NetUtilities/Logger/Logger.h"

BOOL WINAPI DllMain(HINSTANCE /*module*/, DWORD reason, void* /*processEnds*/) {
  if (reason == DLL_PROCESS_ATTACH) UseLogger();
  return TRUE;
}
