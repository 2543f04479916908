#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <utility>

// What tests put in the place of ThreadPlatform::start.

/// Does at once what a thread would do.
inline uint32_t RunAtOnce(std::function<void()> body) {
  std::exchange(body, nullptr)();
  return 0;
}

/// There are no more threads.
inline uint32_t StartNoThread(std::function<void()> body) {
  body = nullptr;
  return ERROR_NOT_ENOUGH_MEMORY;
}
