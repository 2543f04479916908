// The way of a message from the free functions to the service. In processes of their own: there is one Logger in each.

#include "NetUtilities/Log.h"

#include <gmock/gmock.h>

#include "NetUtilities/Logger/Logger.h"
#include "NetUtilities/Module/LifetimeTracker.h"
#include "NetUtilities/Module/SimpleSingleton.h"
#include "NetUtilities/Module/Singleton.h"
#include "tests/support/FakeLogMachine.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/WaitUntil.h"

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// What is there before this program's main function puts another one in its place.
const LogHandler kFirstHandler = logHandler;

class LogTest : public testing::Test {
 protected:
  LogTest() { UseLogger(); }

  // The service is there for this message, and then the thread has gone.
  void LogAndWaitForEndOfThread(std::wstring_view message) {
    const int before = machine.Happened().leaves;
    Log(LogLevel::Error, message);
    EXPECT_TRUE(WaitUntil([&] { return machine.Happened().leaves > before; }));
  }

  FakeLogMachine machine;

 private:
  const Substituted<LogHandler> handler_{logHandler};
};

TEST_F(LogTest, IsDroppedByAModuleThatUsesNoLogger) {
  InOwnProcess([this] {
    logHandler = kFirstHandler;
    Log(LogLevel::Error, L"to nobody");
    EXPECT_FALSE(Singleton<Logger>::Exists());
    EXPECT_EQ(machine.Happened().starts, 0);
  });
}

TEST_F(LogTest, StartsTheLoggerWithTheFirstMessage) {
  InOwnProcess([this] {
    EXPECT_FALSE(Singleton<Logger>::Exists());
    Log(LogSource::Database, LogLevel::Error, L"first");
    EXPECT_TRUE(Singleton<Logger>::Exists());
    EXPECT_TRUE(machine.WaitForSent(1));
    StopLogger();
    EXPECT_THAT(machine.AllSent(), SizeIs(1));
    EXPECT_EQ(machine.AllSent().front().source, 28u);
  });
}

TEST_F(LogTest, LogsFromGeneralUnlessToldOtherwise) {
  InOwnProcess([this] {
    Log(LogLevel::Error, L"x");
    StopLogger();
    ASSERT_THAT(machine.AllSent(), SizeIs(1));
    EXPECT_EQ(machine.AllSent().front().source, 1u);
  });
}

TEST_F(LogTest, CreatesNoLoggerForAnEmptyMessage) {
  InOwnProcess([this] {
    Log(LogLevel::Error, L"");
    EXPECT_EQ(machine.Happened().starts, 0);
  });
}

TEST_F(LogTest, KeepsTheOrderWhetherTheThreadRunsOrNot) {
  InOwnProcess([this] {
    LogAndWaitForEndOfThread(L"starts the thread");
    {
      const LogSession session;
      for (const wchar_t* text : {L"starts it again", L"finds it running", L"and this one too"}) {
        Log(LogLevel::Error, text);
      }
    }
    StopLogger();
    std::vector<std::wstring> texts;
    for (const auto& sent : machine.AllSent()) texts.push_back(sent.text);
    EXPECT_THAT(texts, ElementsAre(HasSubstr(L"starts the thread"), HasSubstr(L"starts it again"),
                                   HasSubstr(L"finds it running"), HasSubstr(L"and this one too")));
    EXPECT_EQ(machine.Happened().starts, 2);
  });
}

TEST_F(LogTest, IsDeliveredWhenTheSessionEnds) {
  InOwnProcess([this] {
    for (size_t session = 1; session <= 20; ++session) {
      {
        const LogSession logging;
        Log(LogLevel::Error, L"x");
      }
      ASSERT_THAT(machine.AllSent(), SizeIs(session));
    }
    StopLogger();  // the thread must not outlive the machine
  });
}

TEST_F(LogTest, IsDeliveredWhenTheSessionEndsBeforeTheHeadStart) {
  InOwnProcess([this] {
    {
      const LogSession logging(20s);
      Log(LogLevel::Error, L"x");
      EXPECT_THAT(machine.AllSent(), IsEmpty());
    }
    EXPECT_THAT(machine.AllSent(), SizeIs(1));
    StopLogger();
  });
}

TEST_F(LogTest, FiltersWhetherTheThreadRunsOrNot) {
  InOwnProcess([this] {
    const LogSession session;
    Log(LogLevel::Trace, L"the first message");
    EXPECT_TRUE(WaitUntil([&] { return machine.Happened().globalLevelQueries > 0; }));
    Log(LogLevel::Trace, L"a later one");
    StopLogger();
    EXPECT_THAT(machine.AllSent(), IsEmpty());
  });
}

TEST_F(LogTest, TriesAgainToStartTheThreadAlsoForAMessageThatIsFilteredOut) {
  InOwnProcess([this] {
    machine.startResult = 8;
    Log(LogLevel::Error, L"waits");
    EXPECT_EQ(machine.Happened().starts, 1);
    machine.startResult = 0;
    Log(LogLevel::Trace, L"is not logged");
    EXPECT_EQ(machine.Happened().starts, 2);
    EXPECT_TRUE(machine.WaitForSent(1));
    StopLogger();
  });
}

TEST_F(LogTest, DropsWhatComesWhenTheProcessEnds) {
  InOwnProcess([this] {
    Log(LogLevel::Error, L"before");
    EXPECT_TRUE(machine.WaitForSent(1));
    threadPlatform.processEnds = [] { return true; };
    Log(LogLevel::Error, L"after");
    threadPlatform.processEnds = [] { return false; };
    StopLogger();
    EXPECT_THAT(machine.AllSent(), SizeIs(1));
  });
}

TEST_F(LogTest, StartsNothingOnceItIsStoppedThoughItWasNeverUsed) {
  InOwnProcess([this] {
    StopLogger();
    EXPECT_FALSE(Singleton<Logger>::Exists());
    Log(LogLevel::Error, L"from a destructor");
    EXPECT_EQ(machine.Happened().starts, 0);
  });
}

TEST_F(LogTest, DropsWhatComesWhenTheLoggerIsGone) {
  InOwnProcess([this] {
    Log(LogLevel::Error, L"before");
    StopLogger();
    Log(LogLevel::Error, L"after it was stopped");
    SimpleSingleton<LifetimeTracker>::Get().DestroyAll();
    Log(LogLevel::Error, L"after everything");
    EXPECT_THAT(machine.AllSent(), SizeIs(1));
    EXPECT_EQ(machine.Happened().starts, 1);
  });
}

}  // namespace
