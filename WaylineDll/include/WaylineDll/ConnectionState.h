#pragma once

#include <cstdint>

/// State of the client's connection.
enum class FSMState : uint32_t {
  Disconnected = 0,
  Connecting = 1,
  Connected = 2,
  Disconnecting = 3,
};
