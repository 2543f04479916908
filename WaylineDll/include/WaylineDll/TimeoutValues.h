#pragma once

#include <chrono>
#include <cstdint>

/// Seconds, as the client hands out durations.
using Duration = std::chrono::duration<int64_t>;

/// An inactivity limit that the server has not told yet.
inline constexpr Duration kUnknownTimeout{28801};

/// No inactivity limit.
inline constexpr Duration kUnlimitedTimeout{59940};
