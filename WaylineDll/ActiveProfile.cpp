#include "WaylineDll/ActiveProfile.h"

#include "NetUtilities/Log.h"
#include "WaylineDll/OpenStore.h"
#include "WaylineDll/Store/SettingsStore.h"

uint32_t GetActiveProfileIdExoprt() {
  SettingsStore* const store = OpenStore();
  return store != nullptr ? store->GetActiveProfileId() : 0;
}

void GetActiveProfileTimeouts2(Duration* session, Duration* idle, Duration* threshold) {
  SettingsStore* const store = OpenStore();
  const ProfileTimeouts timeouts = store != nullptr ? store->GetActiveTimeouts() : ProfileTimeouts();
  if (session != nullptr) *session = timeouts.session;
  if (idle != nullptr) *idle = timeouts.idle;
  if (threshold != nullptr) *threshold = timeouts.threshold;
}

void UpdateActiveProfilePreference(PreferenceId preference, bool on) {
  SettingsStore* const store = OpenStore();
  if (store == nullptr) return;
  const Failure failure =
      store->SetPreference(store->GetActiveProfileId(), preference, on ? Preference::kOn : Preference::kOff);
  if (failure) Log(LogSource::Database, LogLevel::Error, *failure);
}
