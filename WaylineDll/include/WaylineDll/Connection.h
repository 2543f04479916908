#pragma once

#include <cstdint>

#include "WaylineDll/Api.h"

/// State of the client's connection.
enum class FSMState : uint32_t {
  Disconnected = 0,
  Connecting = 1,
  Connected = 2,
  Disconnecting = 3,
};

/// State of the connection's state machine.
WAYLINE_API FSMState GetFSMState();

/// Nonzero while the client holds a connection. Exported as ordinal 2 only.
uint32_t IsConnected();

/// Id of the network location whose proxy configuration is in force; 0 when there is none.
WAYLINE_API uint32_t GetActiveProxyLocationId();
