#pragma once

#include <cstdint>

/// The `TraceFlags` word of the logged-on user; kept for up to 11 seconds.
uint32_t GetTraceFlags();

/// Whether bit number `bit` of the trace flags is set; 32 means "always" and is true without reading anything, higher
/// numbers count modulo 32.
bool IsTraceFlagSet(unsigned bit);

/// The level that the Logger starts with; 4 when none is set. Read anew on every call.
uint16_t GetTraceLevel();

/// Whether messages may go to the debugger output (`DebugOutput`); kept for up to 11 seconds.
bool IsDebugOutputEnabled();
