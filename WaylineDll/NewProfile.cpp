#include "WaylineDll/NewProfile.h"

#include "NetUtilities/Log.h"
#include "WaylineDll/OpenStore.h"
#include "WaylineDll/Store/SettingsStore.h"

std::shared_ptr<Profile> CreateNewProfile() {
  std::shared_ptr<Profile> profile;
  if (SettingsStore* const store = OpenStore()) {
    if (const Failure failure = store->CreateProfile(profile)) Log(LogLevel::Error, *failure);
  }
  return profile;
}
