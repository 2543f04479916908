#include "NetUtilities/Logger/Log.h"

#include "NetUtilities/Logger/Logger.h"
#include "NetUtilities/Singleton.h"

namespace {

void HandToLogger(LogSource source, LogLevel level, std::wstring_view message) {
  if (message.empty()) return;
  if (processLogFilter.IsInUse()) {
    // Most messages end here, and nearly all others with the next line.
    if (!processLogFilter.Passes(source, level)) return;
    // Nobody delivers it, and what it would be queued in may be gone.
    if (threadPlatform.processEnds()) return;
    if (Logger::EnqueueIfRunning(*ProcessLogQueue(), source, level, message)) return;
  }
  if (threadPlatform.processEnds()) return;
  if (const auto logger = Singleton<Logger>::Get()) logger->Enqueue(source, level, message);
}

}  // namespace

LogHandler logHandler = HandToLogger;

void Log(LogSource source, LogLevel level, std::wstring_view message) { logHandler(source, level, message); }

void Log(LogLevel level, std::wstring_view message) { Log(Logger::kDefaultSource, level, message); }
