#pragma once

#include <cstdint>
#include <span>
#include <string_view>

/// A phase that programs can start in, and its title where nobody has stored another one.
struct BuiltInPhase {
  uint16_t phase;
  std::wstring_view title;
};

/// All phases that the client has, in ascending order.
std::span<const BuiltInPhase> BuiltInPhases();
