#include "NetUtilities/Logger/LogLine.h"

#include "NetUtilities/Format.h"

std::wstring LogLinePrefix(const LogTime& time, uint32_t processId, uint32_t threadId) {
  return Format(L"{:02}/{:02} {:02}:{:02}:{:02}.{:03} {:05x}-{:05x}: ", time.month, time.day, time.hour, time.minute,
                time.second, time.millisecond, processId, threadId);
}

bool PassesLogFilter(LogLevel level, uint16_t sourceThreshold, uint16_t globalThreshold) {
  return static_cast<uint16_t>(level) <= (sourceThreshold != 0 ? sourceThreshold : globalThreshold);
}
