#pragma once

#include <cstdio>
#include <cstdlib>
#include <source_location>

/// Ends the program, which the fuzzer takes for a finding, when a property does not hold.
inline void Require(bool holds, const std::source_location& place = std::source_location::current()) {
  if (holds) return;
  std::fprintf(stderr, "%s:%u: a property does not hold\n", place.file_name(), static_cast<unsigned>(place.line()));
  std::abort();
}
