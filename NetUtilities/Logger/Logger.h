#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <string_view>

#include "NetUtilities/Logger/LogLine.h"

/// The process-wide logging facility: filters messages by level, stamps them and delivers them. Reached through
/// Singleton<Logger>, which the free functions of Log.h do.
class Logger {
 public:
  static constexpr LogSource kDefaultSource = LogSource::General;

  /// Filters, stamps and delivers one message; an empty one is dropped before anything else happens.
  void Enqueue(LogSource source, LogLevel level, std::wstring_view message);

 private:
  void Initialize();
  uint16_t SourceThreshold(LogSource source) const;

  std::mutex initializeMutex_;
  std::atomic<bool> initialized_{false};
  std::atomic<uint16_t> globalThreshold_{0};
  std::array<std::atomic<uint16_t>, kLogSourceCount> sourceThresholds_{};
};
