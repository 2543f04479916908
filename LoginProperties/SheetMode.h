#pragma once

#include <cstdint>

/// Which pages the sheet has.
enum class SheetMode : uint32_t {
  Full = 1,
  TimeoutsOnly = 2,
  WiFiSwitchingOnly = 3,
};
