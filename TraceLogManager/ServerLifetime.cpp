#include "TraceLogManager/ServerLifetime.h"

#include <windows.h>

#include <objbase.h>

#include <algorithm>

void ServerLifetime::Enter() {
  CoAddRefServerProcess();
  const std::scoped_lock lock(mutex_);
  ++clients_;
}

void ServerLifetime::Leave() {
  {
    const std::scoped_lock lock(mutex_);
    --clients_;
    lastUse_ = Clock::now();
  }
  changed_.notify_all();
  CoReleaseServerProcess();
}

void ServerLifetime::WaitUntilUnusedFor(std::chrono::milliseconds time) {
  const Clock::time_point start = Clock::now();
  std::unique_lock lock(mutex_);
  for (;;) {
    const Clock::time_point end = std::max(start, lastUse_) + time;
    if (clients_ > 0) {
      changed_.wait(lock);
    } else if (Clock::now() < end) {
      changed_.wait_until(lock, end);
    } else {
      return;
    }
  }
}
