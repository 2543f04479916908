#include "NetUtilities/Module/Singleton.h"

#include <gmock/gmock.h>

#include <new>
#include <string>
#include <vector>

#include "tests/support/OwnProcess.h"

namespace {

using testing::ElementsAre;

void Teardown() { SimpleSingleton<LifetimeTracker>::Get().DestroyAll(); }

// What the objects of a test report, in order.
std::vector<std::string> events;

class First {
 public:
  First() { events.emplace_back("first created"); }
  ~First() { events.emplace_back("first destroyed"); }
  First(const First&) = delete;
  First& operator=(const First&) = delete;

  const std::string text = "text of the first";
};

// Needs another one from the start.
class Second {
 public:
  Second() : first_(Singleton<First>::Get()) { events.emplace_back("second created"); }
  ~Second() { events.emplace_back("second destroyed"); }
  Second(const Second&) = delete;
  Second& operator=(const Second&) = delete;

 private:
  std::shared_ptr<First> first_;
};

struct Third {
  ~Third() { events.emplace_back("third destroyed"); }
};

// Asks for others while it is destroyed.
class Asker {
 public:
  ~Asker() {
    events.emplace_back(Singleton<Asker>::Get() ? "itself there" : "itself gone");
    events.emplace_back(Singleton<First>::Get() ? "an earlier one there" : "an earlier one gone");
    events.emplace_back(Singleton<Third>::Get() ? "a later one there" : "a later one gone");
    events.emplace_back(Singleton<Second>::Get() ? "a new one there" : "a new one gone");
  }
};

struct NeverWanted {};

// Comes into being only on the second attempt.
struct Reluctant {
  Reluctant() {
    if (++attempts == 1) throw std::bad_alloc();
  }
  inline static int attempts = 0;
};

TEST(Singleton, IsTheSameObjectForEverybody) {
  const auto one = Singleton<std::string>::Get();
  ASSERT_TRUE(one);
  EXPECT_EQ(Singleton<std::string>::Get(), one);
  EXPECT_TRUE(Singleton<std::string>::Exists());
}

TEST(Singleton, IsNotCreatedByAskingWhetherItExists) {
  EXPECT_FALSE(Singleton<NeverWanted>::Exists());
  EXPECT_FALSE(Singleton<NeverWanted>::Exists());
}

TEST(Singleton, IsTriedAgainWhenItCouldNotBeCreated) {
  InOwnProcess([] {
    EXPECT_THROW(Singleton<Reluctant>::Get(), std::bad_alloc);
    EXPECT_FALSE(Singleton<Reluctant>::Exists());
    const auto object = Singleton<Reluctant>::Get();
    EXPECT_NE(object, nullptr);
    EXPECT_EQ(Singleton<Reluctant>::Get(), object);
    EXPECT_EQ(Reluctant::attempts, 2);
  });
}

TEST(Singleton, IsNullAfterTeardownAndNotCreatedAgain) {
  InOwnProcess([] {
    EXPECT_TRUE(Singleton<First>::Get());
    Teardown();
    EXPECT_FALSE(Singleton<First>::Exists());
    EXPECT_EQ(Singleton<First>::Get(), nullptr);
    EXPECT_EQ(Singleton<First>::Get(), nullptr);
    EXPECT_THAT(events, ElementsAre("first created", "first destroyed"));
  });
}

TEST(Singleton, IsNullAfterTeardownAlsoWhenNobodyAskedBefore) {
  InOwnProcess([] {
    Teardown();
    EXPECT_EQ(Singleton<First>::Get(), nullptr);
    EXPECT_EQ(Singleton<First>::Get(), nullptr);
    EXPECT_FALSE(Singleton<First>::Exists());
  });
}

TEST(Singleton, IsDestroyedBeforeThoseThatWereCreatedEarlier) {
  InOwnProcess([] {
    Singleton<Second>::Get();
    Singleton<Third>::Get();
    Teardown();
    EXPECT_THAT(events, ElementsAre("first created", "second created", "third destroyed", "second destroyed",
                                    "first destroyed"));
  });
}

TEST(Singleton, LivesOnPastTeardownAsLongAsSomebodyHoldsIt) {
  InOwnProcess([] {
    auto held = Singleton<First>::Get();
    Teardown();
    EXPECT_EQ(held->text, "text of the first");
    EXPECT_THAT(events, ElementsAre("first created"));
    EXPECT_EQ(Singleton<First>::Get(), nullptr) << "It is held, but no longer handed out.";
    held.reset();
    EXPECT_THAT(events, ElementsAre("first created", "first destroyed"));
  });
}

TEST(Singleton, MayAskForItselfAndOthersWhileItIsDestroyed) {
  InOwnProcess([] {
    Singleton<First>::Get();
    Singleton<Asker>::Get();
    Singleton<Third>::Get();
    Teardown();
    EXPECT_THAT(events, ElementsAre("first created", "third destroyed", "itself gone", "an earlier one there",
                                    "a later one gone", "second created", "a new one there", "second destroyed",
                                    "first destroyed"));
  });
}

TEST(LifetimeTracker, DestroysInReverseOrderOfCreation) {
  std::vector<int> destroyed;
  LifetimeTracker tracker;
  tracker.Add([&] { destroyed.push_back(1); });
  tracker.Add([&] { destroyed.push_back(2); });
  tracker.DestroyAll();
  EXPECT_THAT(destroyed, ElementsAre(2, 1));
}

TEST(LifetimeTracker, DestroysWhatIsCreatedWhileItDestroys) {
  std::vector<int> destroyed;
  LifetimeTracker tracker;
  tracker.Add([&] { destroyed.push_back(1); });
  tracker.Add([&] { EXPECT_TRUE(tracker.Add([&] { destroyed.push_back(3); })); });
  tracker.DestroyAll();
  EXPECT_THAT(destroyed, ElementsAre(3, 1));
}

TEST(LifetimeTracker, TakesNothingOnceAllIsDestroyed) {
  std::vector<int> destroyed;
  LifetimeTracker tracker;
  tracker.DestroyAll();
  EXPECT_FALSE(tracker.Add([&] { destroyed.push_back(1); }));
  tracker.DestroyAll();
  EXPECT_THAT(destroyed, ElementsAre());
}

TEST(LifetimeTracker, DestroysInItsOwnEndWhatIsLeft) {
  std::vector<int> destroyed;
  {
    LifetimeTracker tracker;
    tracker.Add([&] { destroyed.push_back(1); });
    tracker.Add([&] { destroyed.push_back(2); });
  }
  EXPECT_THAT(destroyed, ElementsAre(2, 1));
}

}  // namespace
