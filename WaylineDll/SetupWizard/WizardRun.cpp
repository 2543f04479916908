#include "WaylineDll/SetupWizard/WizardRun.h"

#include <algorithm>
#include <utility>

#include "WaylineDll/Messages.h"
#include "WaylineDll/OpenStore.h"
#include "WaylineDll/SetupWizard/WizardStrings.h"
#include "WaylineDll/Store/SettingsStore.h"

namespace {

// None when they cannot be read, which has been logged: the service that the profile has is kept then, and the page
// says so.
std::vector<ServiceRecord> LoadServices() {
  std::vector<ServiceRecord> services;
  if (SettingsStore* const store = OpenStore()) store->LoadServices(services);
  return services;
}

bool CopyLists(uint32_t sourceId, uint32_t newId) {
  SettingsStore* const store = OpenStore();
  return store != nullptr && store->CopyLists(sourceId, newId);
}

}  // namespace

WizardRun::WizardRun(WizardId wizard, SetupWizardData_t& data)
    : wizard_(wizard),
      data_(data),
      services_(LoadServices()),
      draft_(*data.profile, data.manualConfig ? *data.manualConfig : ConfigSetting(), data.profiles) {
  if (wizard != WizardId::NewProfile) return;
  defaults_ = DefaultsToFollow(data.profiles);
  const uint32_t link = data.profile->GetLinkProfile();
  if (std::ranges::find(defaults_, link, &OfferedProfile::id) != defaults_.end()) draft_.SetDefaults(link);
}

std::vector<WizardPage> WizardRun::Pages() const {
  return PagesOf(wizard_, {.hasDefaults = !defaults_.empty(), .setsServers = draft_.setsServers});
}

bool WizardRun::Finish(HWND window) {
  switch (wizard_) {
    case WizardId::Servers:
      draft_.StoreServers(*data_.profile, *data_.manualConfig);
      finished_ = true;
      break;
    case WizardId::NewProfile:
      finished_ = FinishNewProfile(window);
      break;
    case WizardId::UserIdAndService:
      draft_.StoreUserIdAndService(*data_.profile);
      finished_ = true;
      break;
  }
  return finished_;
}

bool WizardRun::FinishNewProfile(HWND window) {
  const ProfileColumns columns = data_.profile->Columns();
  const ConfigSetting config = *data_.manualConfig;
  draft_.StoreNewProfile(*data_.profile, *data_.manualConfig);
  const uint32_t source = draft_.copySource;
  // What is not copied is inherited, so that the profile must follow its defaults by now.
  if (source != 0 && !CopyLists(source, ProfileId())) {
    data_.profile->Columns() = columns;
    *data_.manualConfig = config;
    DisplayError(window, ModuleId::ClientLibrary, IDS_WIZARD_NOT_COPIED, data_.profiles.at(source)->GetName(), {}, {});
    return false;
  }
  data_.copySettings = source != 0;
  data_.copySourceProfileId = source;
  return true;
}
