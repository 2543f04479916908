#pragma once

#include <cstdint>
#include <string_view>

// How the columns' texts become numbers: leading blanks are skipped, one sign may follow, then decimal digits
// up to the first other character. Text without digits is 0; a number out of range becomes the nearest one in
// range.

int64_t ParseInteger64(std::u16string_view text);

int32_t ParseInteger32(std::u16string_view text);
