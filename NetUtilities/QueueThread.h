#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <utility>

#include "NetUtilities/ModuleThread.h"
#include "NetUtilities/Mutex.h"

/// A queue and the thread that empties it. Always owned by a shared pointer.
///
/// A module may be unloaded at any time when nobody is in a call to it, and is told so under a lock that a thread needs
/// to begin and to end: waiting there for a thread waits for ever. So the thread keeps the module loaded (see
/// ThreadPlatform::start), and in turn lives only as long as it is needed: while somebody holds it, while there are
/// items, and a moment longer. When the module is told that it will be unloaded, there is no thread and nothing is
/// queued.
template <typename Item>
class QueueThread : public std::enable_shared_from_this<QueueThread<Item>> {
 public:
  QueueThread() = default;
  virtual ~QueueThread() = default;
  QueueThread(const QueueThread&) = delete;
  QueueThread& operator=(const QueueThread&) = delete;

  /// Keeps the thread, once it runs, from ending for want of items. To be undone with Release.
  void Hold() {
    const std::scoped_lock lock(state_->mutex);
    ++state_->holders;
  }

  void Release() {
    const std::scoped_lock lock(state_->mutex);
    --state_->holders;
    state_->wakeUp.NotifyAll();
  }

  /// Waits until the thread has delivered all items and is done with this object. Items that come later are queued and
  /// stay so.
  void Stop() {
    // Other threads are gone, and may have taken the lock with them.
    if (threadPlatform.processEnds()) return;
    std::unique_lock lock(state_->mutex);
    state_->stopping = true;
    state_->wakeUp.NotifyAll();
    while (state_->threads != 0) state_->gone.Wait(lock);
  }

 protected:
  /// Starts the thread if it does not run. Returns 0 or the system's error.
  uint32_t StartThread() {
    {
      const std::scoped_lock lock(state_->mutex);
      if (!state_->MarkStarted()) return 0;
    }
    return Start();
  }

  /// Adds an item, and starts the thread if it does not run. Returns 0 or the system's error, in which case the item
  /// stays for the next start.
  uint32_t Push(Item&& item) {
    bool wake = false;
    bool start = false;
    {
      const std::scoped_lock lock(state_->mutex);
      state_->items.push_back(std::move(item));
      wake = std::exchange(state_->asleep, false);
      start = state_->MarkStarted();
    }
    if (wake) state_->wakeUp.NotifyOne();
    return start ? Start() : 0;
  }

  bool IsStopping() const {
    const std::scoped_lock lock(state_->mutex);
    return state_->stopping;
  }

  // All that the thread does, between its beginning and its end.
  virtual void ThreadBody() {
    if (!BeginThread()) {
      const std::scoped_lock lock(state_->mutex);
      state_->unable = true;
      return;
    }
    for (std::deque<Item> items; state_->Take(items); items.clear()) Deliver(items);
    EndThread();
  }

  // What happens on the thread. When BeginThread returns false the thread ends, never to be started again. A thread
  // that has begun ends with EndThread.
  virtual bool BeginThread() = 0;
  virtual void Deliver(std::deque<Item>& items) = 0;
  virtual void EndThread() = 0;

 private:
  // Outlives the object for as long as its thread needs it.
  struct State {
    Mutex mutex;
    Condition wakeUp;
    Condition gone;
    std::deque<Item> items;
    int holders = 0;
    int threads = 0;        // those that may still touch the object
    bool running = false;   // one of them takes items
    bool asleep = false;    // it must be woken to see a new item
    bool stopping = false;  // it is to end, and none is to be started
    bool unable = false;    // it could not begin

    bool MarkStarted() {
      if (running || stopping || unable) return false;
      running = true;
      ++threads;
      return true;
    }

    // False when an item has come since the thread looked last.
    bool MarkEnded() {
      const std::scoped_lock lock(mutex);
      if (!items.empty() && !unable) return false;
      running = false;
      return true;
    }

    void MarkGone() {
      const std::scoped_lock lock(mutex);
      --threads;
      gone.NotifyAll();
    }

    // Waits for items and takes all. False when the thread is to end. While items keep coming the thread naps instead
    // of sleeping, so that those who bring them need not wake it, which would cost them more than everything else that
    // they do.
    bool Take(std::deque<Item>& taken) {
      constexpr auto kNap = std::chrono::milliseconds(1);
      constexpr int kNapCount = 20;
      std::unique_lock lock(mutex);
      for (int naps = 0; items.empty(); ++naps) {
        if (stopping) return false;
        if (naps < kNapCount) {
          wakeUp.WaitFor(lock, kNap);
        } else if (holders == 0) {
          return false;
        } else {
          asleep = true;
          wakeUp.Wait(lock);
          asleep = false;
        }
      }
      taken.swap(items);
      return true;
    }
  };

  uint32_t Start() {
    const uint32_t code = threadPlatform.start([self = this->shared_from_this(), state = state_]() mutable {
      do self->ThreadBody();
      while (!state->MarkEnded());
      self.reset();
      state->MarkGone();
    });
    if (code != 0) {
      const std::scoped_lock lock(state_->mutex);
      state_->running = false;
      --state_->threads;
      state_->gone.NotifyAll();
    }
    return code;
  }

  const std::shared_ptr<State> state_ = std::make_shared<State>();
};
