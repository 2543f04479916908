#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>

#include "Database/Profiles/Profile.h"
#include "WaylineDll/Api.h"
#include "WaylineDll/ConfigSetting.h"
#include "WaylineDll/WizardId.h"

class ServiceInfo;

/// What a wizard is given, and what it hands back when the user finishes it.
struct SetupWizardData_t {
  std::shared_ptr<Profile> profile;  // the profile that the wizard edits
  ProfileTable profiles;             // every profile: to follow, to copy from, and whose names are taken
  std::shared_ptr<ServiceInfo> service;
  std::shared_ptr<ConfigSetting> manualConfig;  // servers and new-profile wizards only
  bool copySettings = false;                    // out: the library has copied the preferences and autostart entries ...
  uint32_t copySourceProfileId = 0;             // out: ... of this profile
};

/// Launcher of a wizard; destroyed after use.
class WAYLINE_CLASS Tether {
 public:
  virtual ~Tether();
};

/// Launches a setup wizard over another window.
class WAYLINE_CLASS SetupWizardTether : public Tether {
 public:
  /// Runs the wizard modally over the top-level window of `parent`; 1 when the user finished it, in which case `data`
  /// and its records are filled. Otherwise 0: they are as before, and what cannot be shown has been told or logged.
  int64_t ShowAsSecondaryWindow(HWND parent, WizardId wizard, SetupWizardData_t* data);
};
