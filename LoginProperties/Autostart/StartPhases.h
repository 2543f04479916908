#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "WaylineDll/AutoStartItem.h"

/// A time at which programs can be started.
struct StartPhase {
  std::wstring name;
  uint16_t phase;
  bool operator==(const StartPhase&) const = default;
};

/// The phases that the headers of an autostart list name, from the first on.
std::vector<StartPhase> StartPhases(const AutoStartTable& items);
