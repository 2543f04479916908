#include "WaylineDll/Bookmarks.h"

#include <optional>

#include "WaylineDll/OpenStore.h"
#include "WaylineDll/Store/SettingsStore.h"

namespace {

// Takes what is stored, if anything is.
template <typename Value>
bool Take(std::optional<Value> (StoredValues::*get)(uint32_t) const, Bookmark::Index index, Value& value) {
  const SettingsStore* const store = OpenStore();
  if (store == nullptr) return false;
  const std::optional<Value> stored = (store->Values().*get)(static_cast<uint32_t>(index));
  if (stored) value = *stored;
  return stored.has_value();
}

}  // namespace

bool BookmarkGetString(Bookmark::Index index, std::wstring& text) {
  return Take(&StoredValues::GetBookmark, index, text);
}

bool BookmarkGetBool(Bookmark::Index index, bool& flag) { return Take(&StoredValues::GetBookmarkFlag, index, flag); }
