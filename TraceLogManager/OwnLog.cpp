// Where the helpers that this program uses log their failures: its log would be itself, so that they go to the debugger
// output. These stand in for the functions that send messages to the logging service.

#include <string_view>

#include "NetUtilities/Logger/Log.h"
#include "NetUtilities/Logger/LogOutputHelper.h"

void Log(LogSource, LogLevel, std::wstring_view message) {
  LogOutputHelper::GetLogOutput(LogOutput::Debugger)(message);
}

void Log(LogLevel level, std::wstring_view message) { Log(LogSource::General, level, message); }
