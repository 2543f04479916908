#pragma once

#include <cstdint>
#include <functional>

/// What threads need of the machine. Production values are in ModuleThread.cpp; tests put others in their place.
struct ThreadPlatform {
  /// Starts a thread that runs `body`, which must not throw. This module stays loaded until the thread has left its
  /// code. Returns 0 or the system's error.
  uint32_t (*start)(std::function<void()> body);

  /// True when the process ends, and all other threads have been ended wherever they were.
  bool (*processEnds)();
};

extern ThreadPlatform threadPlatform;
