#include "Database/Profiles/ProfileIdManager.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "Database/Profiles/Profile.h"

uint32_t ProfileIdManager::NextId() {
  uint32_t id = last_ + 1;
  if (id == Profile::kNewId) {
    id = kLastDefaultsId + 1;
    while (used_.contains(id)) ++id;
    if (id >= Profile::kNewId) return 0;
  }
  used_.insert(id);
  last_ = std::max(last_, id);
  return id;
}

void ProfileIdManager::SetUsed(std::set<uint32_t> ids, uint32_t lastRemoved) {
  used_ = std::move(ids);
  const auto end = used_.lower_bound(Profile::kNewId);
  last_ = std::max(kLastDefaultsId, end != used_.begin() ? *std::prev(end) : 0);
  if (lastRemoved < Profile::kNewId) last_ = std::max(last_, lastRemoved);
}
