#pragma once

#include <cstdint>

/// The client's setup wizards. Other numbers belong to other parts of the client.
enum class WizardId : uint32_t {
  Servers = 3,
  NewProfile = 4,
  UserIdAndService = 5,
};
