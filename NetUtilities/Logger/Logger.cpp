#include "NetUtilities/Logger/Logger.h"

#include <utility>

#include "NetUtilities/Logger/LogPlatform.h"
#include "NetUtilities/Singleton.h"

namespace {

// Reading the trace level may itself fail and log. Such a message is met by the thread that is initializing and must
// not wait for that to end.
thread_local bool initializing = false;

uint16_t ReadTraceLevel() {
  struct Scope {
    Scope() { initializing = true; }
    ~Scope() { initializing = false; }
  } const scope;
  return logPlatform.traceLevel();
}

}  // namespace

void Logger::Enqueue(LogSource source, LogLevel level, std::wstring_view message) {
  if (message.empty()) return;
  if (!initialized_) Initialize();
  if (!PassesLogFilter(level, SourceThreshold(source), globalThreshold_)) return;
  std::wstring line = LogLinePrefix(logPlatform.localTime(), logPlatform.processId(), logPlatform.threadId());
  line += message;
  logPlatform.deliver({source, level, std::move(line)});
}

void Logger::Initialize() {
  if (initializing) return;
  const uint16_t level = ReadTraceLevel();
  const std::scoped_lock lock(initializeMutex_);
  if (initialized_) return;
  globalThreshold_ = level;
  initialized_ = true;
}

uint16_t Logger::SourceThreshold(LogSource source) const {
  const auto index = static_cast<uint16_t>(source);
  return index < kLogSourceCount ? sourceThresholds_[index].load() : uint16_t{0};
}

void Log(LogSource source, LogLevel level, std::wstring_view message) {
  if (const auto logger = Singleton<Logger>::Get()) logger->Enqueue(source, level, message);
}

void Log(LogLevel level, std::wstring_view message) { Log(Logger::kDefaultSource, level, message); }
