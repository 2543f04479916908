#include "NetUtilities/Singleton.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

struct CountsCreations {
  CountsCreations() { ++created; }
  inline static std::atomic<int> created = 0;
};

struct NeverWanted {};

}  // namespace

TEST(Singleton, IsCreatedOnceByManyThreads) {
  std::vector<std::thread> threads;
  threads.reserve(8);
  for (int i = 0; i < 8; ++i) threads.emplace_back([] { (void)Singleton<CountsCreations>::Get(); });
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(CountsCreations::created, 1);
  EXPECT_TRUE(Singleton<CountsCreations>::Exists());
}

TEST(Singleton, IsNotCreatedByAskingWhetherItExists) {
  EXPECT_FALSE(Singleton<NeverWanted>::Exists());
  EXPECT_FALSE(Singleton<NeverWanted>::Exists());
}

TEST(LifetimeTracker, DestroysInReverseOrderOfCreation) {
  std::vector<int> destroyed;
  LifetimeTracker tracker;
  tracker.Add([&] { destroyed.push_back(1); });
  tracker.Add([&] { destroyed.push_back(2); });
  tracker.DestroyAll();
  EXPECT_EQ(destroyed, (std::vector<int>{2, 1}));
}

TEST(LifetimeTracker, DestroysWhatIsCreatedWhileItDestroys) {
  std::vector<int> destroyed;
  LifetimeTracker tracker;
  tracker.Add([&] { destroyed.push_back(1); });
  tracker.Add([&] { tracker.Add([&] { destroyed.push_back(3); }); });
  tracker.DestroyAll();
  EXPECT_EQ(destroyed, (std::vector<int>{3, 1}));
}
