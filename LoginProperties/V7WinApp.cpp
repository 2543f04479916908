#include "LoginProperties/V7WinApp.h"

#include <commctrl.h>

#include "Database/SQLite/DatabasePlatform.h"
#include "LoginProperties/SettingsFile.h"
#include "NetUtilities/Logger/Logger.h"
#include "NetUtilities/Module/LifetimeTracker.h"
#include "NetUtilities/Module/Owner.h"
#include "NetUtilities/Module/SimpleSingleton.h"

namespace {

Owner<HGDIOBJ, DeleteObject> gdiObject;

}  // namespace

bool V7WinApp::InitInstance(HINSTANCE module) {
  UseLogger();
  crashHandlers_.Install();
  module_ = module;
  // The client may have opened another database than the user's own.
  databasePlatform.settingsFile = SettingsFileOfClient;
  InitCommonControls();
  return true;
}

void V7WinApp::ExitInstance() {
  gdiObject.reset();
  StopLogger();
  SimpleSingleton<LifetimeTracker>::Get().DestroyAll();
  crashHandlers_.Uninstall();
}

void V7WinApp::KeepGdiObject(HGDIOBJ object) {
  if (object != gdiObject.get()) gdiObject.reset(object);
}

HGDIOBJ V7WinApp::GdiObject() { return gdiObject.get(); }
