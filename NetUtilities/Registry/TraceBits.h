#pragma once

/// The number of the trace bit that is always set, whatever the trace flags are. The bits of the flags are 0 to 31.
inline constexpr unsigned kTraceAlways = 32;

/// Bit of the trace flags that shows what the Logger itself does.
inline constexpr unsigned kLoggerTraceFlag = 16;
