#pragma once

#include <cstdint>
#include <string_view>

/// Severity of a message; smaller is more severe.
enum class LogLevel : uint16_t {
  Fatal = 1,
  Error = 2,
  Info = 3,
  Detail = 4,
  Trace = 5,
};

/// Number of log sources; a source is a number below it.
inline constexpr uint16_t kLogSourceCount = 37;

/// Which component a message comes from. The numbers without a name belong to other parts of the client.
enum class LogSource : uint16_t {
  General = 1,
  Impersonation = 8,
  Database = 28,
};

/// Logs one message, composed by the caller and without a line end. Any thread may log.
void Log(LogSource source, LogLevel level, std::wstring_view message);

/// As above, from the source `General`.
void Log(LogLevel level, std::wstring_view message);

/// What becomes of this module's messages. At first they are dropped; UseLogger of Logger.h hands them to the Logger,
/// and a program or a test may put a function of its own here.
using LogHandler = void (*)(LogSource source, LogLevel level, std::wstring_view message);
extern LogHandler logHandler;
