#include "LoginProperties/V7WinApp.h"

#include <commctrl.h>

#include "NetUtilities/LifetimeTracker.h"
#include "NetUtilities/Logger/Logger.h"
#include "NetUtilities/SimpleSingleton.h"

bool V7WinApp::InitInstance(HINSTANCE module) {
  crashHandlers_.Install();
  module_ = module;
  InitCommonControls();
  return true;
}

void V7WinApp::ExitInstance() {
  StopLogger();
  SimpleSingleton<LifetimeTracker>::Get().DestroyAll();
  crashHandlers_.Uninstall();
}
