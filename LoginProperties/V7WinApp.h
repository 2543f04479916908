#pragma once

#include <windows.h>

#include <string>

#include "NetUtilities/Crash/CrashHandlers.h"

/// The module's application object: what is done when the module is loaded and when it is unloaded. Both happen under
/// the system's loader lock, so that nothing here waits for a thread.
class V7WinApp {
 public:
  V7WinApp() = default;
  V7WinApp(const V7WinApp&) = delete;
  V7WinApp& operator=(const V7WinApp&) = delete;

  /// Prepares the module, whose instance is `module`.
  bool InitInstance(HINSTANCE module);

  /// Ends what the module has begun, in order. Not to be called when the process ends: its other threads are gone by
  /// then, and the system takes everything back.
  void ExitInstance();

  /// Keeps a GDI object for the whole module, such as a font that a page makes only once: until ExitInstance, which
  /// deletes it. It must not be selected into a device context then. One that is kept already is deleted at once.
  static void KeepGdiObject(HGDIOBJ object);

  /// The GDI object that is kept; null when there is none.
  static HGDIOBJ GdiObject();

  const std::wstring& Name() const { return name_; }
  HINSTANCE Module() const { return module_; }

 private:
  const std::wstring name_ = L"Pavise";
  CrashHandlers crashHandlers_;
  HINSTANCE module_ = nullptr;
};
