#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "NetUtilities/Log.h"

/// The level of each source; 0 where the global one applies.
using SourceLevels = std::array<uint16_t, kLogSourceCount>;

/// What `--show` prints: the levels with the names of the sources, and where the log is. UTF-8 with its line ends.
std::string LevelReport(uint16_t globalLevel, const SourceLevels& sourceLevels, const std::wstring& logFile);
