#pragma once

#include <cstdint>
#include <set>

/// Up to this id profiles are defaults, which an administrator makes and login profiles are linked to.
inline constexpr uint32_t kLastDefaultsId = 2000;

/// Hands out ids for new profiles. Reached through Singleton<ProfileIdManager>; used by one thread.
class ProfileIdManager {
 public:
  /// An id above those of defaults and below 10000, which asks for an id and is none: one more than the last one that
  /// is in use or was handed out, and when those are used up the first that is free. 0 when none is left.
  uint32_t NextId();

  /// Tells which ids are in use, and the highest that was; all that were handed out before are forgotten. Whoever owns
  /// the profiles does so before the first new one is made.
  void SetUsed(std::set<uint32_t> ids, uint32_t lastRemoved = 0);

 private:
  std::set<uint32_t> used_;
  uint32_t last_ = kLastDefaultsId;
};
