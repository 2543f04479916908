#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <utility>

#include "NetUtilities/Module/ModuleThread.h"
#include "NetUtilities/Module/Mutex.h"

/// A queue and the thread that empties it. Always owned by a shared pointer.
///
/// A module may be unloaded at any time when nobody is in a call to it, and is told so under a lock that a thread needs
/// to begin and to end: waiting there for a thread waits for ever. So the thread keeps the module loaded (see
/// ThreadPlatform::start), and in turn lives only as long as it is needed: while somebody holds it, while there are
/// items, and a moment longer. When the module is told that it will be unloaded, there is no thread, and nothing is
/// queued but what no thread could be started for.
///
/// `Items` is a container with empty(), clear() and swap().
template <typename Items>
class QueueThread : public std::enable_shared_from_this<QueueThread<Items>> {
 public:
  /// The items, and what is known of the thread. Outlives the object for as long as its thread needs it, or longer: who
  /// adds many items may keep it at hand.
  class Queue {
   public:
    Queue() = default;
    Queue(const Queue&) = delete;
    Queue& operator=(const Queue&) = delete;

    /// Has `add` add an item if the thread runs; returns false if not.
    template <typename Add>
    bool AddIfRunning(Add add) {
      bool wake = false;
      {
        const std::scoped_lock lock(mutex_);
        if (!running_) return false;
        wake = Append(add);
      }
      if (wake) wakeUp_.NotifyOne();
      return true;
    }

    /// No thread is started any more; one that runs ends when it has delivered all items.
    void Close() {
      const std::scoped_lock lock(mutex_);
      stopping_ = true;
      wakeUp_.NotifyAll();
    }

   private:
    friend class QueueThread;

    // To be called under the lock. True when the thread must be woken after it.
    template <typename Add>
    bool Append(Add add) {
      add(items_);
      return std::exchange(asleep_, false);
    }

    Mutex mutex_;
    Condition wakeUp_;
    Condition progress_;  // all items are delivered, or a thread has ended
    Items items_;
    int holders_ = 0;
    int threads_ = 0;        // those that may still touch the object
    bool running_ = false;   // one of them takes items
    bool delivers_ = false;  // it has taken some
    bool asleep_ = false;    // it must be woken to see a new item
    bool stopping_ = false;  // it is to end, and none is to be started
    bool unable_ = false;    // it could not begin
    std::chrono::steady_clock::time_point headStartEnds_;

    bool MarkStarted() {
      if (running_ || stopping_ || unable_) return false;
      running_ = true;
      ++threads_;
      return true;
    }

    // False when an item has come since the thread looked last.
    bool MarkEnded() {
      const std::scoped_lock lock(mutex_);
      if (!items_.empty() && !unable_) return false;
      running_ = false;
      progress_.NotifyAll();
      return true;
    }

    bool IsBusy() const { return running_ && (delivers_ || !items_.empty()); }

    void MarkGone() {
      const std::scoped_lock lock(mutex_);
      --threads_;
      progress_.NotifyAll();
    }

    void WaitForHeadStart() {
      std::unique_lock lock(mutex_);
      while (holders_ != 0 && !stopping_) {
        const auto left = headStartEnds_ - std::chrono::steady_clock::now();
        if (left <= left.zero()) return;
        wakeUp_.WaitFor(lock, left);
      }
    }

    // Waits for items and takes all. False when the thread is to end. After an item the thread naps for a while instead
    // of sleeping, so that those who bring the next ones need not wake it, which would cost them many times more than
    // everything else that they do.
    bool Take(Items& taken) {
      constexpr auto kNap = std::chrono::milliseconds(1);
      constexpr int kNaps = 20;
      constexpr auto kLongNap = std::chrono::milliseconds(10);
      constexpr int kLongNaps = 100;
      std::unique_lock lock(mutex_);
      delivers_ = false;
      if (items_.empty()) progress_.NotifyAll();
      for (int naps = 0; items_.empty(); ++naps) {
        if (stopping_) return false;
        if (naps < kNaps) {
          wakeUp_.WaitFor(lock, kNap);
        } else if (holders_ == 0) {
          return false;
        } else if (naps < kNaps + kLongNaps) {
          wakeUp_.WaitFor(lock, kLongNap);
        } else {
          asleep_ = true;
          wakeUp_.Wait(lock);
          asleep_ = false;
        }
      }
      taken.swap(items_);
      delivers_ = true;
      return true;
    }
  };

  explicit QueueThread(std::shared_ptr<Queue> queue = std::make_shared<Queue>()) : queue_(std::move(queue)) {}
  virtual ~QueueThread() = default;
  QueueThread(const QueueThread&) = delete;
  QueueThread& operator=(const QueueThread&) = delete;

  /// Keeps the thread, once it runs, from ending for want of items. One that is started does nothing for as long as the
  /// head start of those who go on meanwhile, unless it is to deliver at once: when it is flushed or to stop, or nobody
  /// holds it any more.
  void Hold(std::chrono::milliseconds headStart = {}) {
    const std::scoped_lock lock(queue_->mutex_);
    ++queue_->holders_;
    queue_->headStartEnds_ = std::chrono::steady_clock::now() + headStart;
  }

  /// Undoes Hold.
  void Release() {
    // Other threads are gone when the process ends, and may have taken the lock with them.
    if (threadPlatform.processEnds()) return;
    const std::scoped_lock lock(queue_->mutex_);
    --queue_->holders_;
    queue_->wakeUp_.NotifyAll();
  }

  /// Waits until all items have been delivered, as far as there is a thread that does so, but no longer than `limit`.
  void Flush(std::chrono::milliseconds limit) {
    if (threadPlatform.processEnds()) return;
    const auto end = std::chrono::steady_clock::now() + limit;
    std::unique_lock lock(queue_->mutex_);
    queue_->headStartEnds_ = {};
    queue_->wakeUp_.NotifyAll();
    while (queue_->IsBusy()) {
      const auto left = end - std::chrono::steady_clock::now();
      if (left <= left.zero()) return;
      queue_->progress_.WaitFor(lock, left);
    }
  }

  /// Waits until the thread has delivered all items and is done with this object. Items that come later are queued and
  /// stay so.
  void Stop() {
    if (threadPlatform.processEnds()) return;
    std::unique_lock lock(queue_->mutex_);
    queue_->stopping_ = true;
    queue_->wakeUp_.NotifyAll();
    while (queue_->threads_ != 0) queue_->progress_.Wait(lock);
  }

 protected:
  /// Starts the thread if it does not run. Returns 0 or the system's error.
  uint32_t StartThread() {
    {
      const std::scoped_lock lock(queue_->mutex_);
      if (!queue_->MarkStarted()) return 0;
    }
    return Start();
  }

  /// Has `add` add an item, and starts the thread if it does not run and `mayStart`. Returns 0 or the system's error.
  /// Without a thread the item stays for the next start.
  template <typename Add>
  uint32_t Push(Add add, bool mayStart = true) {
    bool wake = false;
    bool start = false;
    {
      const std::scoped_lock lock(queue_->mutex_);
      wake = queue_->Append(add);
      start = mayStart && queue_->MarkStarted();
    }
    if (wake) queue_->wakeUp_.NotifyOne();
    return start ? Start() : 0;
  }

  /// Takes the items that no thread has delivered. For the end of the object: there are some if no thread could be
  /// started for them.
  Items TakeUndelivered() {
    const std::scoped_lock lock(queue_->mutex_);
    return std::exchange(queue_->items_, {});
  }

  bool IsStopping() const {
    const std::scoped_lock lock(queue_->mutex_);
    return queue_->stopping_;
  }

  // All that the thread does, between its beginning and its end.
  virtual void ThreadBody() {
    queue_->WaitForHeadStart();
    if (!BeginThread()) {
      const std::scoped_lock lock(queue_->mutex_);
      queue_->unable_ = true;
      return;
    }
    for (Items items; queue_->Take(items); items.clear()) Deliver(items);
    EndThread();
  }

  // What happens on the thread. When BeginThread returns false the thread ends, never to be started again. A thread
  // that has begun ends with EndThread.
  virtual bool BeginThread() = 0;
  virtual void Deliver(Items& items) = 0;
  virtual void EndThread() = 0;

 private:
  uint32_t Start() {
    const uint32_t code = threadPlatform.start([self = this->shared_from_this(), queue = queue_]() mutable {
      do self->ThreadBody();
      while (!queue->MarkEnded());
      self.reset();
      queue->MarkGone();
    });
    if (code != 0) {
      const std::scoped_lock lock(queue_->mutex_);
      queue_->running_ = false;
      --queue_->threads_;
      queue_->progress_.NotifyAll();
    }
    return code;
  }

  const std::shared_ptr<Queue> queue_;
};
