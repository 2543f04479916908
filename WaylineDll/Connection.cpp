#include "WaylineDll/Connection.h"

#include "WaylineDll/OpenStore.h"
#include "WaylineDll/Store/SettingsStore.h"

// The reference client has no network stack of its own: what its connection does is what is stored.

FSMState GetFSMState() {
  const SettingsStore* const store = OpenStore();
  return store != nullptr ? store->Values().GetConnectionState() : FSMState::Disconnected;
}

uint32_t IsConnected() { return GetFSMState() == FSMState::Connected ? 1 : 0; }

uint32_t GetActiveProxyLocationId() {
  const SettingsStore* const store = OpenStore();
  return store != nullptr ? store->Values().GetProxyLocation() : 0;
}
