#pragma once

#include <windows.h>

#include "LoginProperties/LoginPropertiesContext.h"
#include "NetUtilities/Module/Owner.h"
#include "WaylineDll/SettingsTables.h"

/// The module that shows the sheet, Pavise.dll, loaded at run time. Records that it made are released before
/// it goes.
class SheetModule {
 public:
  /// Loads the module from the program's own folder.
  Failure Load();

  /// The handle of the loaded module, which holds the sheet's resources.
  HINSTANCE Instance() const { return library_.get(); }

  /// As ShowLoginProperties of the loaded module.
  INT_PTR Show(LoginPropertiesContext& context) const { return showLoginProperties_(&context); }

 private:
  Owner<HMODULE, FreeLibrary> library_;
  INT_PTR (*showLoginProperties_)(LoginPropertiesContext*) = nullptr;
};
