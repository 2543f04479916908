#pragma once

#include <cstdint>

/// Hands out ids for new profiles. Reached through Singleton<ProfileIdManager>; used by one thread.
class ProfileIdManager {
 public:
  /// One more than the last id.
  uint32_t NextId() { return ++last_; }

  /// Sets the last id in use; whoever owns the profiles does so before the first new one is made. Ids must not reach
  /// 10000, which asks for an id and is none: beyond 9998 it is at least 10000 that counts as used.
  void SetLast(uint32_t last) { last_ = last; }

 private:
  uint32_t last_ = 0;
};
