#pragma once

#include <pthread.h>

#include <chrono>
#include <mutex>
#include <system_error>

/// As std::mutex, for objects that end before the process does. The compiler's own never gives its mutexes and
/// condition variables back to the system; on Windows each one that threads have met at leaves a handle behind.
class Mutex {
 public:
  Mutex() { pthread_mutex_init(&mutex_, nullptr); }
  ~Mutex() { pthread_mutex_destroy(&mutex_); }
  Mutex(const Mutex&) = delete;
  Mutex& operator=(const Mutex&) = delete;

  // NOLINTBEGIN(readability-identifier-naming): as std::scoped_lock asks

  /// Throws std::system_error when the system refuses.
  void lock() { ThrowIfFailed(pthread_mutex_lock(&mutex_)); }
  void unlock() { pthread_mutex_unlock(&mutex_); }

  // NOLINTEND(readability-identifier-naming)

  /// Throws std::system_error for an error number other than 0.
  static void ThrowIfFailed(int code) {
    if (code != 0) throw std::system_error(code, std::generic_category());
  }

 private:
  friend class Condition;
  pthread_mutex_t mutex_;
};

/// As std::condition_variable, for a Mutex. Waiting may end without a notification.
class Condition {
 public:
  Condition() { pthread_cond_init(&condition_, nullptr); }
  ~Condition() { pthread_cond_destroy(&condition_); }
  Condition(const Condition&) = delete;
  Condition& operator=(const Condition&) = delete;

  void NotifyOne() { pthread_cond_signal(&condition_); }
  void NotifyAll() { pthread_cond_broadcast(&condition_); }

  void Wait(std::unique_lock<Mutex>& lock) { pthread_cond_wait(&condition_, &lock.mutex()->mutex_); }

  /// Waits no longer than `time`.
  void WaitFor(std::unique_lock<Mutex>& lock, std::chrono::nanoseconds time) {
    constexpr auto kSecond = std::chrono::nanoseconds(std::chrono::seconds(1)).count();
    const auto end =
        (std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::system_clock::now().time_since_epoch()) +
         time)
            .count();
    timespec limit{};
    limit.tv_sec = static_cast<decltype(limit.tv_sec)>(end / kSecond);
    limit.tv_nsec = static_cast<decltype(limit.tv_nsec)>(end % kSecond);
    pthread_cond_timedwait(&condition_, &lock.mutex()->mutex_, &limit);
  }

 private:
  pthread_cond_t condition_;
};
