// A module that starts and stops as the product does and logs what it is told to.

#include "tests/programs/LoggingModule.h"

#include <windows.h>

#include <optional>
#include <string>

#include "NetUtilities/Log.h"
#include "NetUtilities/Logger/Logger.h"
#include "NetUtilities/Logger/LogPlatform.h"
#include "NetUtilities/Text/Format.h"

namespace {

std::optional<LogSession> session;
LineReceiver lineReceiver = nullptr;
LineReceiver reportReceiver = nullptr;

// Hands lines to the test instead of to another process.
class ReceivingService : public LogService {
 public:
  int32_t GetGlobalLevel(uint16_t& level) override { return level = 4, S_OK; }
  int32_t GetSourceLevel(uint32_t, uint16_t& level) override { return level = 0, S_OK; }
  int32_t LogMessage(uint32_t, uint16_t, std::wstring_view text) override {
    return lineReceiver(std::wstring(text).c_str()), S_OK;
  }
};

}  // namespace

extern "C" {

void LogNumbers(uint16_t source, uint16_t level, const wchar_t* name, int count) {
  for (int number = 0; number < count; ++number) {
    Log(LogSource{source}, LogLevel{level}, Format(L"{} {}", name, number));
  }
}

void HoldService(bool held) {
  session.reset();
  if (held) session.emplace();
}

void SendLinesTo(LineReceiver receiver) {
  lineReceiver = receiver;
  logPlatform.connect = [](int32_t& result) -> std::unique_ptr<LogService> {
    result = S_OK;
    return std::make_unique<ReceivingService>();
  };
}

void SendReportsTo(LineReceiver receiver) {
  reportReceiver = receiver;
  logPlatform.reportToFile = [](std::wstring_view line) { reportReceiver(std::wstring(line).c_str()); };
}

}  // extern "C"
