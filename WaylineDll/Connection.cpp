#include "WaylineDll/Connection.h"

// The reference client has no network stack of its own, so that it is never connected.

FSMState GetFSMState() { return FSMState::Disconnected; }

uint32_t IsConnected() { return GetFSMState() == FSMState::Connected ? 1 : 0; }

uint32_t GetActiveProxyLocationId() { return 0; }
