#pragma once

#include <cstdint>
#include <string>

#include "WaylineDll/Api.h"

/// Values that the client stores between runs.
namespace Bookmark {
enum class Index : uint32_t {
  ShowServerSettings = 8,
};
}

/// A stored value as text; false, and `text` left alone, when it is not stored.
WAYLINE_API bool BookmarkGetString(Bookmark::Index index, std::wstring& text);

/// A stored value as a flag; false, and `flag` left alone, when it is not stored or neither "0" nor "1".
WAYLINE_API bool BookmarkGetBool(Bookmark::Index index, bool& flag);
