#include "NetUtilities/LifetimeTracker.h"

#include <utility>

void LifetimeTracker::Add(std::function<void()> destroy) {
  const std::scoped_lock lock(mutex_);
  destroyers_.push_back(std::move(destroy));
}

void LifetimeTracker::DestroyAll() {
  for (;;) {
    std::function<void()> destroy;
    {
      const std::scoped_lock lock(mutex_);
      if (destroyers_.empty()) return;
      destroy = std::move(destroyers_.back());
      destroyers_.pop_back();
    }
    destroy();
  }
}
