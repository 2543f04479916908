#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

/// A number that is read again only when its last reading has become old: the registry switches that every log call and
/// traced function asks for. Any thread may ask. Threads that find it old at the same time all read it; the last one
/// wins.
class RefreshedDword {
 public:
  using Read = uint32_t (*)();
  using Clock = std::chrono::steady_clock;
  using Now = Clock::time_point (*)();

  explicit constexpr RefreshedDword(Read read, Now now = Clock::now) : read_(read), now_(now) {}

  /// The value, less than 11 seconds old. Reading may ask for this very value, when it fails and logs that: what is
  /// asked within a reading is the value before it, 0 before the first.
  uint32_t Get();

 private:
  bool IsOld(Clock::duration now) const;

  static constexpr auto kNever = Clock::duration::min().count();

  Read read_;
  Now now_;
  std::atomic<uint32_t> value_{0};
  std::atomic<Clock::rep> readAt_{kNever};
};
