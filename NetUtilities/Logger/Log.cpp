#include "NetUtilities/Logger/Log.h"

#include "NetUtilities/Logger/Logger.h"
#include "NetUtilities/Singleton.h"

namespace {

void HandToLogger(LogSource source, LogLevel level, std::wstring_view message) {
  // Most messages end here, which is why it comes first.
  if (processLogFilter.IsSet() && !processLogFilter.Passes(source, level)) return;
  if (const auto logger = Singleton<Logger>::Get()) logger->Enqueue(source, level, message);
}

}  // namespace

LogHandler logHandler = HandToLogger;

void Log(LogSource source, LogLevel level, std::wstring_view message) { logHandler(source, level, message); }

void Log(LogLevel level, std::wstring_view message) { Log(Logger::kDefaultSource, level, message); }
