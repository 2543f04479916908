#pragma once

#include <windows.h>

#include <memory>

#include "Database/Profiles/Preference.h"
#include "Database/Profiles/Profile.h"
#include "LoginProperties/SheetMode.h"
#include "WaylineDll/AutoStartItem.h"
#include "WaylineDll/ConfigSetting.h"

/// What the caller hands to ShowLoginProperties and gets back. Copying it copies the tables; the records themselves are
/// shared by all copies. Null records are allowed and stand for nothing.
struct LoginPropertiesContext {
  HWND parentWindow = nullptr;           // owner of the sheet and of every page
  HINSTANCE resourceInstance = nullptr;  // module that holds the pages' templates
  SheetMode mode{};

  std::shared_ptr<Profile> currentProfile;  // the profile that is selected on every page

  // The profile that the current profile's LinkProfile names, when the Timeouts page has looked it up; kept until
  // another one is found.
  std::shared_ptr<Profile> linkedDefaultProfile;

  ProfileTable profiles;        // every login profile known to the client
  PreferenceTable preferences;  // of the profile that the Preferences page shows
  AutoStartTable autoStartItems;
  ConfigTable manualConfigs;  // filled as pages ask; null where none could be read
  ConfigTable autoConfigs;
};

/// The module's own context, which every page reads and changes while the sheet is open. It lives from one call of
/// ShowLoginProperties to the next.
LoginPropertiesContext& GetContext();
