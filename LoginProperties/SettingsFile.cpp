#include "LoginProperties/SettingsFile.h"

#include <windows.h>

// A library of before does not have the function, so that it is not imported.
std::wstring SettingsFileOfClient() {
  const HMODULE library = GetModuleHandleW(L"WaylineDll.dll");
  const FARPROC found = library != nullptr ? GetProcAddress(library, "_Z15GetSettingsFileB5cxx11v") : nullptr;
  if (found == nullptr) return {};
  return reinterpret_cast<std::wstring (*)()>(reinterpret_cast<void*>(found))();
}
