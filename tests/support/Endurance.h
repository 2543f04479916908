#pragma once

#include <cstdlib>

/// True when tests that take minutes run at their full size: the environment variable PAVISE_ENDURANCE is set.
inline bool FullSize() { return std::getenv("PAVISE_ENDURANCE") != nullptr; }
