#pragma once

#include <windows.h>

#include <cstdint>

// The levels, which are kept in the registry of the machine. Each call reads or writes there.

/// Level of the sources that have none of their own; 4 when none is set.
uint16_t ReadGlobalLevel();

/// A source's own level; 0 when it has none.
uint16_t ReadSourceLevel(uint32_t source);

/// Sets the level of the sources that have none of their own. Gives a Win32 error code, as the next.
LONG WriteGlobalLevel(uint16_t level);

/// Sets a source's own level; 0 for none.
LONG WriteSourceLevel(uint32_t source, uint16_t level);
