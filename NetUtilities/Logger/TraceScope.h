#pragma once

#include <chrono>
#include <functional>
#include <source_location>
#include <string>
#include <string_view>

#include "NetUtilities/Registry/TraceBits.h"

/// Whether a trace scope says how long it lasted.
enum class TraceTiming { Untimed, Timed };

/// Writes an "Enter" line when it is made and an "Exit" line at the end of its scope, however that is left: a traced
/// function has one as its first local. Whether it writes is decided in the beginning, for both lines. A scope that
/// does not costs no more than asking for its trace flag.
class [[nodiscard]] TraceScope {
 public:
  /// Takes one finished line, without a line end. Must not throw: it is also called while an exception unwinds.
  using Output = std::function<void(std::wstring_view)>;

  /// The scope is active when trace bit `bit` is set: 0 to 31, or kTraceAlways. Its lines name the function and, when
  /// it is not empty, `extraText`.
  explicit TraceScope(unsigned bit, std::wstring_view extraText = {}, Output output = WriteToLog,
                      TraceTiming timing = TraceTiming::Untimed,
                      const char* functionName = std::source_location::current().function_name());
  ~TraceScope();
  TraceScope(const TraceScope&) = delete;
  TraceScope& operator=(const TraceScope&) = delete;

  /// Logs a line at level `Trace` from source `General`: where lines go unless told otherwise.
  static void WriteToLog(std::wstring_view line);

 private:
  const bool active_;
  const TraceTiming timing_;
  const Output output_;
  std::wstring text_;  // what follows the arrow in both lines
  std::chrono::nanoseconds start_{};
};
