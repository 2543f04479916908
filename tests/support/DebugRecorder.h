#pragma once

#include <windows.h>

#include <chrono>
#include <mutex>
#include <semaphore>
#include <stdexcept>
#include <stop_token>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/support/DebugMonitor.h"

/// Collects what is sent to the debugger while it lives, so that nobody who sends has to wait. One at a time.
class DebugRecorder {
 public:
  /// The messages since the last call, in order.
  std::vector<std::string> Take() {
    OutputDebugStringA(kMark);
    if (!marked_.try_acquire_for(std::chrono::seconds(20))) throw std::runtime_error("The recorder hears nothing.");
    const std::scoped_lock lock(mutex_);
    return std::exchange(messages_, {});
  }

 private:
  void Record(const std::stop_token& stop) {
    constexpr DWORD kLookForStopMilliseconds = 10;
    while (!stop.stop_requested()) {
      auto message = monitor_.Receive(kLookForStopMilliseconds);
      if (!message) continue;
      if (*message == kMark) {
        marked_.release();
      } else {
        const std::scoped_lock lock(mutex_);
        messages_.push_back(std::move(*message));
      }
    }
  }

  static constexpr char kMark[] = "all until here";

  DebugMonitor monitor_;
  std::mutex mutex_;
  std::vector<std::string> messages_;
  std::binary_semaphore marked_{0};
  std::jthread thread_{[this](const std::stop_token& stop) { Record(stop); }};
};
