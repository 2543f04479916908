#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

/// The client's logging service, TraceLogManager, as the logger thread reaches it. Operations return HRESULTs.
class LogService {
 public:
  virtual ~LogService() = default;
  virtual int32_t GetGlobalLevel(uint16_t& level) = 0;
  virtual int32_t GetSourceLevel(uint32_t source, uint16_t& level) = 0;
  virtual int32_t LogMessage(uint32_t source, uint16_t level, std::wstring_view text) = 0;
};
