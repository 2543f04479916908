#include "NetUtilities/Log.h"

LogHandler logHandler = [](LogSource, LogLevel, std::wstring_view) {};

void Log(LogSource source, LogLevel level, std::wstring_view message) { logHandler(source, level, message); }

void Log(LogLevel level, std::wstring_view message) { Log(LogSource::General, level, message); }
