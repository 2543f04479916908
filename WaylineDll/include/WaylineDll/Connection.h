#pragma once

#include <cstdint>

#include "WaylineDll/Api.h"
#include "WaylineDll/ConnectionState.h"

/// State of the connection's state machine; disconnected when it is not known.
WAYLINE_API FSMState GetFSMState();

/// Nonzero while the client holds a connection. Exported as ordinal 2 only.
uint32_t IsConnected();

/// Id of the network location whose proxy configuration is in force; 0 when there is none, or it is not known.
WAYLINE_API uint32_t GetActiveProxyLocationId();
