#include "tests/support/LogCapture.h"

#include <mutex>

namespace {

std::mutex mutex;
std::vector<LogCapture::Message> messages;

void Collect(LogSource source, LogLevel level, std::wstring_view message) {
  const std::scoped_lock lock(mutex);
  messages.push_back({source, level, std::wstring(message)});
}

}  // namespace

LogCapture::LogCapture() : previous_(logHandler) {
  messages.clear();
  logHandler = Collect;
}

LogCapture::~LogCapture() { logHandler = previous_; }

const std::vector<LogCapture::Message>& LogCapture::Messages() const { return messages; }
