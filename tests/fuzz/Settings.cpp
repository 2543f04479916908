// What all fuzz programs have in common.

#include "NetUtilities/Log.h"

// The sanitizers ask for their settings by these names. Inputs are many and short-lived: little is kept of what they
// freed.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() {
  return "quarantine_size_mb=8:malloc_context_size=12:allow_addr2line=1";
}
extern "C" const char* __ubsan_default_options();
extern "C" const char* __ubsan_default_options() { return "print_stacktrace=1"; }
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)

// There is no logging service for what is not caught.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  logHandler = [](LogSource, LogLevel, std::wstring_view) {};
  return 0;
}
