#pragma once

#include <functional>
#include <vector>

#include "NetUtilities/Module/Mutex.h"

/// Knows the process-wide objects of the module and destroys them in reverse order of their creation. The module's one
/// is SimpleSingleton<LifetimeTracker>. Any thread may ask for anything.
class LifetimeTracker {
 public:
  LifetimeTracker() = default;
  ~LifetimeTracker();
  LifetimeTracker(const LifetimeTracker&) = delete;
  LifetimeTracker& operator=(const LifetimeTracker&) = delete;

  /// Adds an object that was just created; `destroy` lets go of it. False when all objects have been destroyed already,
  /// and nobody would destroy this one.
  bool Add(std::function<void()> destroy);

  /// Destroys the tracked objects, the last created first. Objects that are created meanwhile are destroyed too.
  void DestroyAll();

 private:
  Mutex mutex_;
  std::vector<std::function<void()>> destroyers_;
  bool ended_ = false;
};
