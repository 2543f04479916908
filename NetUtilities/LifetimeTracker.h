#pragma once

#include <functional>
#include <mutex>
#include <vector>

/// Knows the process-wide objects of the module and destroys them in reverse order of their creation. The module's one
/// is SimpleSingleton<LifetimeTracker>; it outlives every object that it tracks.
class LifetimeTracker {
 public:
  /// Adds an object that was just created; `destroy` lets go of it.
  void Add(std::function<void()> destroy);

  /// Destroys the tracked objects, the last created first. Objects that are created meanwhile are destroyed too.
  void DestroyAll();

 private:
  std::mutex mutex_;
  std::vector<std::function<void()>> destroyers_;
};
