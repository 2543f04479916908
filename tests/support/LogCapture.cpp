#include "tests/support/LogCapture.h"

namespace {

// All captured lines carry the same prefix, which is cut off again.
constexpr LogTime kTime = {1, 3, 9, 5, 7, 4};
constexpr uint32_t kProcess = 0x1a2;
constexpr uint32_t kThread = 0x3b;

std::vector<LogCapture::Message> messages;

void Collect(const LogRecord& record) {
  messages.push_back({record.source, record.level, record.text.substr(LogLinePrefix(kTime, kProcess, kThread).size())});
}

}  // namespace

LogCapture::LogCapture() : previous_(logPlatform) {
  messages.clear();
  logPlatform.localTime = [] { return kTime; };
  logPlatform.processId = [] { return kProcess; };
  logPlatform.threadId = [] { return kThread; };
  logPlatform.deliver = Collect;
}

LogCapture::~LogCapture() { logPlatform = previous_; }

const std::vector<LogCapture::Message>& LogCapture::Messages() const { return messages; }
