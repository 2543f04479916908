#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>

#include "NetUtilities/Module/LifetimeTracker.h"
#include "NetUtilities/Module/Mutex.h"
#include "NetUtilities/Module/SimpleSingleton.h"

/// The module's one `T`: created on first use, handed out as a shared reference, destroyed by the LifetimeTracker.
template <typename T>
class Singleton {
 public:
  /// The instance; null once it, or everything, has been destroyed, and for what its own constructor calls: a caller
  /// that gets null skips its work. A reference keeps the object alive until it is let go, also past its destruction by
  /// the tracker. What its constructor throws goes to the caller, and the next one tries again.
  static std::shared_ptr<T> Get() {
    // Creating an object may log, and so ask for objects.
    const std::thread::id creator = creator_;
    if (creator != std::thread::id() && creator == std::this_thread::get_id()) return nullptr;
    std::shared_ptr<T> created;  // one that came too late is released after the lock
    const std::scoped_lock lock(mutex_);
    if (!instance_ && !ended_) {
      created = Create();
      ended_ = !SimpleSingleton<LifetimeTracker>::Get().Add(&Singleton::Destroy);
      if (!ended_) instance_ = created;
    }
    return instance_;
  }

  /// True while the instance exists; asking does not create it.
  static bool Exists() {
    const std::scoped_lock lock(mutex_);
    return instance_ != nullptr;
  }

 private:
  static std::shared_ptr<T> Create() {
    struct Scope {
      Scope() { creator_ = std::this_thread::get_id(); }
      ~Scope() { creator_ = std::thread::id(); }
    } const scope;
    return std::make_shared<T>();
  }

  static void Destroy() {
    std::shared_ptr<T> last;  // released after the lock, so that the object's destructor may call Get()
    const std::scoped_lock lock(mutex_);
    ended_ = true;
    last.swap(instance_);
  }

  inline static Mutex mutex_;
  inline static std::shared_ptr<T> instance_;
  inline static std::atomic<std::thread::id> creator_;  // the thread that creates the instance at this moment
  inline static bool ended_ = false;
};
