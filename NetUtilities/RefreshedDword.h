#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

/// A number that is read again only when its last reading has become old: the registry switches that every log call and
/// traced function asks for. Threads that find it old at the same time all read it; the last one wins.
class RefreshedDword {
 public:
  using Read = uint32_t (*)();
  using Now = std::chrono::steady_clock::time_point (*)();

  explicit constexpr RefreshedDword(Read read, Now now = std::chrono::steady_clock::now) : read_(read), now_(now) {}

  /// The value, at most 11 seconds old.
  uint32_t Get() {
    constexpr auto kMaximumAge = std::chrono::seconds(10);
    const auto now = now_().time_since_epoch();
    const auto age = now - std::chrono::steady_clock::duration(readAt_.load(std::memory_order_relaxed));
    // Whole seconds count: the age must exceed ten of them, which it does from eleven on.
    if (everRead_.load(std::memory_order_acquire) && std::chrono::floor<std::chrono::seconds>(age) <= kMaximumAge) {
      return value_.load(std::memory_order_relaxed);
    }
    // Counts as read from now on: reading may fail, and reporting that may ask for this very value.
    readAt_.store(now.count(), std::memory_order_relaxed);
    everRead_.store(true, std::memory_order_release);
    const uint32_t value = read_();
    value_.store(value, std::memory_order_relaxed);
    return value;
  }

 private:
  Read read_;
  Now now_;
  std::atomic<uint32_t> value_{0};
  std::atomic<std::chrono::steady_clock::rep> readAt_{0};
  std::atomic<bool> everRead_{false};
};
