#include "LoginProperties/Autostart/DelayOptions.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int32_t kProceed = 1;
constexpr int32_t kUntilConnected = 2;
constexpr int32_t kBeforeConnecting = 3;

constexpr size_t kNone = 0;

// From index 1 on.
constexpr Delay kDelays[] = {
    {10, kProceed},         {30, kProceed},         {60, kProceed},           {120, kProceed},          {300, kProceed},
    {120, kUntilConnected}, {300, kUntilConnected}, {120, kBeforeConnecting}, {300, kBeforeConnecting},
};

// Of these the seconds alone tell which one is meant.
bool IsShort(int32_t seconds) { return seconds == 10 || seconds == 30 || seconds == 60; }

bool IsLong(int32_t seconds) { return seconds == 120 || seconds == 300; }

}  // namespace

size_t OfferedDelays(int phase) {
  constexpr size_t kBeforeConnectingOnly = 2;
  const size_t all = 1 + std::size(kDelays);
  return phase <= 0 ? all : all - kBeforeConnectingOnly;
}

Delay ChosenDelay(size_t index, Delay stored) { return index == kNone ? Delay{stored.seconds, 0} : kDelays[index - 1]; }

std::optional<size_t> IndexOfDelay(Delay stored, size_t offered) {
  if (IsShort(stored.seconds)) stored.waitMode = kProceed;
  const auto* const found = std::ranges::find(kDelays, stored);
  if (found == std::end(kDelays)) return IsLong(stored.seconds) ? std::nullopt : std::optional(kNone);
  const auto index = static_cast<size_t>(found - kDelays) + 1;
  return index < offered ? index : kNone;
}
