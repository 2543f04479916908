#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The least severe level, which is the highest number.
inline constexpr uint16_t kHighestLogLevel = 5;

/// Name of a log source; "Source 5" for one that has none of its own.
std::wstring SourceName(uint32_t source);

/// The source that `text` means: its number, or its name in any case of ASCII letters.
std::optional<uint32_t> FindSource(std::wstring_view text);

/// Name of a level; "Level 7" for one that has none.
std::wstring LevelName(uint32_t level);
