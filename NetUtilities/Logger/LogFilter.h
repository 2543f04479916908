#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include "NetUtilities/Log.h"

/// The levels up to which messages are logged. Read by every thread that logs, written by the logger thread, one number
/// at a time.
class LogFilter {
 public:
  /// False until the global threshold is set for the first time.
  bool IsSet() const { return set_.load(std::memory_order_acquire); }

  /// True once there is a Logger that works: a message that does not pass then needs nothing else.
  bool IsInUse() const { return inUse_.load(std::memory_order_acquire); }
  void MarkInUse() { inUse_.store(true, std::memory_order_release); }

  void SetGlobal(uint16_t threshold) {
    global_.store(threshold, std::memory_order_relaxed);
    set_.store(true, std::memory_order_release);
  }

  /// A threshold of its own for `source`, which must be below kLogSourceCount; 0 means the global one.
  void SetSource(uint16_t source, uint16_t threshold) {
    sources_.at(source).store(threshold, std::memory_order_relaxed);
  }

  /// Whether a message is logged. The global threshold applies to sources that do not exist.
  bool Passes(LogSource source, LogLevel level) const {
    const auto index = static_cast<uint16_t>(source);
    const uint16_t own = index < kLogSourceCount ? sources_[index].load(std::memory_order_relaxed) : uint16_t{0};
    return static_cast<uint16_t>(level) <= (own != 0 ? own : global_.load(std::memory_order_relaxed));
  }

 private:
  std::atomic<bool> set_{false};
  std::atomic<bool> inUse_{false};
  std::atomic<uint16_t> global_{0};
  std::array<std::atomic<uint16_t>, kLogSourceCount> sources_{};
};
