#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>

/// Knows how many clients use this server, and when it is no longer needed. Any thread may call it.
class ServerLifetime {
 public:
  /// One more client, and one less. COM is told too, so that it sends no new client once the server is going to end.
  void Enter();
  void Leave();

  /// Returns when no client has used the server for this long, counted from now at the earliest.
  void WaitUntilUnusedFor(std::chrono::milliseconds time);

 private:
  using Clock = std::chrono::steady_clock;

  std::mutex mutex_;
  std::condition_variable changed_;
  size_t clients_ = 0;
  Clock::time_point lastUse_;
};
