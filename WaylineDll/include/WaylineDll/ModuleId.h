#pragma once

#include <cstdint>

/// Whose resources and strings are meant. Other numbers belong to other modules of the client.
enum class ModuleId : uint32_t {
  ClientLibrary = 0,    // WaylineDll.dll
  LoginProperties = 3,  // Pavise.dll
};
