#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

/// How an entry keeps the client waiting, as its record stores it.
struct Delay {
  int32_t seconds;
  int32_t waitMode;
  bool operator==(const Delay&) const = default;
};

// The list of delays. An index counts from "(none)".

/// How many of the delays are offered while the phase with index `phase` is selected, negative for none: the last two
/// hold up the connection, and only the first phase comes before it.
size_t OfferedDelays(int phase);

/// What an entry stores that had `stored` before its user chose the delay with this index.
Delay ChosenDelay(size_t index, Delay stored);

/// Index of a stored delay among the first `offered`; nothing for one that leaves the selection as it is.
std::optional<size_t> IndexOfDelay(Delay stored, size_t offered);
