#pragma once

#include <cstdint>

// How a sheet ends: what ShowLoginProperties returns, with the numbers of the platform's property sheet.

inline constexpr intptr_t kSheetConfirmed = 1;  // by OK
inline constexpr intptr_t kSheetCancelled = 0;
inline constexpr intptr_t kSheetNotShown = -1;  // it could not be created, as for a mode that has no pages
