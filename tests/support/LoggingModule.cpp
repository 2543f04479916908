// A module that starts and stops as the product does and logs what it is told to.

#include "tests/support/LoggingModule.h"

#include <windows.h>

#include <string>

#include "NetUtilities/Format.h"
#include "NetUtilities/Logger/Log.h"
#include "NetUtilities/Logger/LogPlatform.h"

namespace {

LineReceiver receiver = nullptr;

// Hands lines to the test instead of to another process.
class ReceivingService : public LogService {
 public:
  int32_t GetGlobalLevel(uint16_t& level) override { return level = 4, S_OK; }
  int32_t GetSourceLevel(uint32_t, uint16_t& level) override { return level = 0, S_OK; }
  int32_t LogMessage(uint32_t, uint16_t, const std::wstring& text) override { return receiver(text.c_str()), S_OK; }
};

}  // namespace

extern "C" {

void LogNumbers(const wchar_t* name, int count) {
  for (int number = 0; number < count; ++number) Log(LogLevel::Error, Format(L"{} {}", name, number));
}

void SendLinesTo(LineReceiver newReceiver) {
  receiver = newReceiver;
  logPlatform.connect = [](int32_t& result) -> std::unique_ptr<LogService> {
    result = S_OK;
    return std::make_unique<ReceivingService>();
  };
}

}  // extern "C"
