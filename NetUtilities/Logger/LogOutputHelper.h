#pragma once

#include <functional>
#include <string_view>

/// Local places for reports that cannot go through the Logger.
enum class LogOutput {
  Debugger,  // the debugger output, as "TARN: {}\n", while `DebugOutput` is on
  File,      // the FileLogger, behind the module's name and the prefix of log lines
};

namespace LogOutputHelper {

/// A function that writes one message, without a line end, to `output`.
std::function<void(std::wstring_view)> GetLogOutput(LogOutput output);

}  // namespace LogOutputHelper
