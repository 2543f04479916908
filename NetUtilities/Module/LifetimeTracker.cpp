#include "NetUtilities/Module/LifetimeTracker.h"

#include <utility>

#include "NetUtilities/Module/ModuleThread.h"

LifetimeTracker::~LifetimeTracker() {
  // Threads that the end of the process has caught may have taken locks with them; the system takes everything back.
  if (!threadPlatform.processEnds()) DestroyAll();
}

bool LifetimeTracker::Add(std::function<void()> destroy) {
  const std::scoped_lock lock(mutex_);
  if (!ended_) destroyers_.push_back(std::move(destroy));
  return !ended_;
}

void LifetimeTracker::DestroyAll() {
  for (;;) {
    std::function<void()> destroy;
    {
      const std::scoped_lock lock(mutex_);
      ended_ = destroyers_.empty();
      if (ended_) return;
      destroy = std::move(destroyers_.back());
      destroyers_.pop_back();
    }
    destroy();
  }
}
