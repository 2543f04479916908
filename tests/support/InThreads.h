#pragma once

#include <atomic>
#include <thread>
#include <vector>

/// How many threads InThreads starts.
inline constexpr int kThreads = 8;

/// Keeps these threads together: who arrives waits for all others of the same round.
class MeetingPoint {
 public:
  void Arrive() {
    const int endOfRound = (arrived_++ / kThreads + 1) * kThreads;
    while (arrived_ < endOfRound) std::this_thread::yield();
  }

 private:
  std::atomic<int> arrived_ = 0;
};

/// Runs `body(number of the thread)` in eight threads that start together, and waits for them.
template <typename Body>
void InThreads(Body body) {
  MeetingPoint start;
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      start.Arrive();
      body(thread);
    });
  }
}
