#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>

#include "Database/Profiles/Profile.h"
#include "WaylineDll/Api.h"
#include "WaylineDll/ConfigSetting.h"

class ServiceInfo;

/// The client's setup wizards. Other numbers belong to other parts of the client.
enum class WizardId : uint32_t {
  Servers = 3,
  NewProfile = 4,
  UserIdAndService = 5,
};

/// What a wizard is given, and what it hands back when the user finishes it.
struct SetupWizardData_t {
  std::shared_ptr<Profile> profile;  // the profile that the wizard edits
  ProfileTable profiles;             // every profile, for checking names
  std::shared_ptr<ServiceInfo> service;
  std::shared_ptr<ConfigSetting> manualConfig;  // servers and new-profile wizards only
  bool copySettings = false;                    // out: copy preferences and autostart entries ...
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
  /// Runs the wizard modally over `parent`; 1 when the user finished it, in which case `data` is filled.
  int64_t ShowAsSecondaryWindow(HWND parent, WizardId wizard, SetupWizardData_t* data);
};
