// What becomes of messages when something that the Logger needs fails: the first time, the second time and so on, once
// or from then on.

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <ranges>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "NetUtilities/Logger/Logger.h"
#include "NetUtilities/Logger/LogPlatform.h"
#include "NetUtilities/Module/ModuleThread.h"
#include "NetUtilities/Text/Format.h"
#include "tests/support/FakeLogMachine.h"
#include "tests/support/FaultPlan.h"
#include "tests/support/WaitUntil.h"

namespace {

using testing::Each;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

using namespace std::chrono_literals;
using Mode = FaultPlan::Mode;
using Texts = std::vector<std::wstring>;

constexpr int32_t kFailure = -2147467259;  // E_FAIL
constexpr uint32_t kNoMemory = 8;
constexpr wchar_t kPrefix[] = L"01/03 09:05:07.004 001a2-0003b: ";

// What may fail.
enum class Operation { StartThread, EnterThread, Connect, GetGlobalLevel, GetSourceLevel, LogMessage };

// A machine on which one operation fails as planned, and a Logger on it.
class FaultyMachine {
 public:
  FaultyMachine(Operation operation, int call, Mode mode) : operation_(operation) {
    current = this;
    plan_.Arm(call, mode);
    threadPlatform.start = [](std::function<void()> body) { return current->StartThread(std::move(body)); };
    logPlatform.enterServiceThread = [] {
      return current->Fails(Operation::EnterThread) ? kFailure : current->sound_.enterServiceThread();
    };
    logPlatform.connect = [](int32_t& result) { return current->Connect(result); };
  }
  ~FaultyMachine() {
    logger->Stop();
    WaitForRest();
  }
  FaultyMachine(const FaultyMachine&) = delete;
  FaultyMachine& operator=(const FaultyMachine&) = delete;

  void Log(const std::wstring& text, LogLevel level = LogLevel::Error, LogSource source = LogSource::General) const {
    logger->Enqueue(source, level, text);
  }

  // Waits until there is no thread.
  void WaitForRest() const {
    EXPECT_TRUE(WaitUntil([this] { return threads_ == 0; }));
  }

  bool WasHit() const { return plan_.WasHit(); }
  int Calls() const { return plan_.Calls(); }

  // What the service has taken, without the prefix.
  Texts Taken() const {
    Texts texts;
    for (const FakeLogMachine::Sent& sent : machine.AllSent()) {
      EXPECT_TRUE(sent.text.starts_with(kPrefix));
      texts.push_back(sent.text.substr(std::size(kPrefix) - 1));
    }
    return texts;
  }

  // The reports into the file that begin so.
  Texts Reports(const std::wstring& start) const {
    Texts reports = machine.FileReports();
    std::erase_if(reports, [&](const std::wstring& line) { return !line.starts_with(start); });
    return reports;
  }
  Texts Errors() const { return Reports(L"Error: "); }

  FakeLogMachine machine;
  LogFilter filter;
  const std::shared_ptr<Logger> logger = std::make_shared<Logger>(filter);

 private:
  // The service of the machine, as far as it does not fail.
  class Service : public LogService {
   public:
    explicit Service(std::unique_ptr<LogService> sound) : sound_(std::move(sound)) {}
    int32_t GetGlobalLevel(uint16_t& level) override {
      return current->Fails(Operation::GetGlobalLevel) ? kFailure : sound_->GetGlobalLevel(level);
    }
    int32_t GetSourceLevel(uint32_t source, uint16_t& level) override {
      return current->Fails(Operation::GetSourceLevel) ? kFailure : sound_->GetSourceLevel(source, level);
    }
    int32_t LogMessage(uint32_t source, uint16_t level, std::wstring_view text) override {
      return current->Fails(Operation::LogMessage) ? kFailure : sound_->LogMessage(source, level, text);
    }

   private:
    std::unique_ptr<LogService> sound_;
  };

  bool Fails(Operation operation) { return operation == operation_ && plan_.Fails(); }

  uint32_t StartThread(std::function<void()> body) {
    if (Fails(Operation::StartThread)) return kNoMemory;
    ++threads_;
    return soundThreads_.start([this, body = std::move(body)] {
      body();
      --threads_;
    });
  }

  std::unique_ptr<LogService> Connect(int32_t& result) {
    if (Fails(Operation::Connect)) return result = kFailure, nullptr;
    return std::make_unique<Service>(sound_.connect(result));
  }

  inline static FaultyMachine* current;
  const Operation operation_;
  FaultPlan plan_;
  const LogPlatform sound_ = logPlatform;  // as the machine has set it up
  const ThreadPlatform soundThreads_ = threadPlatform;
  std::atomic<int> threads_ = 0;
};

// Some messages of several sources and levels. Three times the thread has nothing to do and ends, and once the levels
// grow old.
void LogThroughADay(FaultyMachine& faulty) {
  faulty.Log(L"morning");
  faulty.WaitForRest();
  faulty.logger->Hold();
  faulty.Log(L"noon");
  faulty.Log(L"noon database", LogLevel::Detail, LogSource::Database);
  faulty.Log(L"noon trace", LogLevel::Trace);
  faulty.Log(L"noon out of range", LogLevel::Error, LogSource{kLogSourceCount});
  faulty.Log(L"noon last source", LogLevel::Fatal, LogSource{kLogSourceCount - 1});
  faulty.logger->Release();
  faulty.WaitForRest();
  faulty.machine.now += 61s;
  faulty.Log(L"evening");
  faulty.WaitForRest();
  faulty.logger->Hold();
  faulty.Log(L"night database", LogLevel::Detail, LogSource::Database);
  faulty.Log(L"night", LogLevel{0});
  faulty.logger->Release();
  faulty.logger->Stop();
  faulty.Log(L"too late");
  faulty.logger->Stop();
}

// What the service takes on such a day when nothing fails, thread by thread.
const std::vector<Texts> kDay = {
    {L"morning"}, {L"noon", L"noon database", L"noon last source"}, {L"evening"}, {L"night database", L"night"}};
constexpr int kThreadsOfDay = 4;
constexpr int kMessagesOfDay = 7;

// What the first threads of the day deliver.
Texts DayOf(int threads) {
  Texts texts;
  for (const Texts& thread : kDay | std::views::take(threads)) texts.insert(texts.end(), thread.begin(), thread.end());
  return texts;
}

class LoggerFaults : public testing::TestWithParam<Mode> {
 protected:
  // Runs `scenario` with a fault at the first call of `operation`, then at the second, until nothing fails any more.
  // Without a fault the scenario has so many calls.
  static void Loop(Operation operation, int calls, const std::function<void(FaultyMachine&, int call)>& scenario) {
    for (int call = 1; call <= calls + 1; ++call) {
      SCOPED_TRACE(testing::Message() << "fault at call " << call);
      FaultyMachine faulty(operation, call, GetParam());
      scenario(faulty, call);
      EXPECT_EQ(faulty.WasHit(), call <= calls);
      if (faulty.WasHit()) continue;
      EXPECT_EQ(faulty.Calls(), calls);
      EXPECT_THAT(faulty.Errors(), IsEmpty());
    }
  }

  static bool Once() { return GetParam() == Mode::Once; }

  // How many of `calls` fail when the fault is at this one.
  static int Failures(int call, int calls) {
    const int left = std::max(calls + 1 - call, 0);
    return Once() ? std::min(left, 1) : left;
  }
};

TEST_P(LoggerFaults, AThreadThatCannotBeStartedIsTriedAgainWithTheNextMessageAndLosesNothing) {
  Loop(Operation::StartThread, kThreadsOfDay, [](FaultyMachine& faulty, int call) {
    LogThroughADay(faulty);
    EXPECT_THAT(faulty.Errors(), Each(L"Error: Unable to create Logger thread - 'text of 8' Error 8"));
    if (Once()) {
      EXPECT_THAT(faulty.Errors(), SizeIs(Failures(call, kThreadsOfDay)));
      EXPECT_THAT(faulty.Taken(), ElementsAreArray(DayOf(kThreadsOfDay)));
      EXPECT_THAT(faulty.Reports(L"Info:  "), SizeIs(2));
    } else {
      // Until the first thread runs, messages that are filtered out or too late try to start it, too.
      constexpr std::array<size_t, kThreadsOfDay + 1> kAttempts = {10, 7, 3, 2, 0};
      EXPECT_THAT(faulty.Errors(), SizeIs(kAttempts.at(static_cast<size_t>(call - 1))));
      EXPECT_THAT(faulty.Taken(), ElementsAreArray(DayOf(call - 1)));
    }
  });
}

TEST_P(LoggerFaults, AThreadWithoutComEndsAndLaterRecordsStayQueued) {
  Loop(Operation::EnterThread, kThreadsOfDay, [](FaultyMachine& faulty, int call) {
    LogThroughADay(faulty);
    EXPECT_THAT(faulty.Errors(), Each(L"Error: Unable to initialize COM for the TraceLogManager! Error -2147467259"));
    EXPECT_THAT(faulty.Errors(), SizeIs(call <= kThreadsOfDay ? 1 : 0)) << "It is not tried again.";
    EXPECT_THAT(faulty.Taken(), ElementsAreArray(DayOf(call - 1)));
    const FakeLogMachine::Counts counts = faulty.machine.Happened();
    EXPECT_EQ(counts.leaves, counts.enters) << "What was begun is undone, and nothing else.";
    EXPECT_EQ(counts.connections, counts.disconnections);
  });
}

TEST_P(LoggerFaults, WithoutTheGlobalLevelThatOfTheMachineHoldsUntilTheNextRefresh) {
  constexpr int kRefreshes = 2;
  Loop(Operation::GetGlobalLevel, kRefreshes, [](FaultyMachine& faulty, int call) {
    faulty.machine.traceLevel = 2;  // while the service says 4, which is that of the details of noon and night
    LogThroughADay(faulty);
    EXPECT_THAT(faulty.Errors(),
                Each(L"Error: Unable to get current log level from TraceLogManager! Error -2147467259"));
    EXPECT_THAT(faulty.Errors(), SizeIs(Failures(call, kRefreshes)));
    Texts expected = DayOf(kThreadsOfDay);
    if (call == 1) std::erase(expected, L"noon database");
    if (call == 2 || (call == 1 && !Once())) std::erase(expected, L"night database");
    EXPECT_THAT(faulty.Taken(), ElementsAreArray(expected));
    EXPECT_THAT(faulty.machine.Happened().sourceLevelQueries, SizeIs(kRefreshes * (kLogSourceCount - 1)));
  });
}

TEST_P(LoggerFaults, ASourceWhoseLevelIsNotToldKeepsItsLevel) {
  constexpr int kSources = kLogSourceCount - 1;
  Loop(Operation::GetSourceLevel, kSources, [](FaultyMachine& faulty, int call) {
    for (uint16_t source = 1; source <= kSources; ++source) faulty.filter.SetSource(source, 1);
    faulty.machine.sourceLevels.fill(5);
    faulty.logger->Initialize();
    EXPECT_TRUE(WaitUntil([&] { return faulty.Calls() == kSources; }));
    faulty.Log(L"delivered", LogLevel::Fatal);
    faulty.logger->Stop();
    for (uint16_t source = 1; source <= kSources; ++source) {
      const bool failed = Once() ? source == call : source >= call;
      EXPECT_EQ(faulty.filter.Passes(LogSource{source}, LogLevel::Trace), !failed) << source;
      EXPECT_TRUE(faulty.filter.Passes(LogSource{source}, LogLevel::Fatal)) << source;
    }
    EXPECT_THAT(faulty.Errors(), IsEmpty()) << "Nothing is said of that.";
    EXPECT_THAT(faulty.Taken(), SizeIs(1));
  });
}

TEST_P(LoggerFaults, ARejectedMessageLosesOnlyItself) {
  Loop(Operation::LogMessage, kMessagesOfDay, [](FaultyMachine& faulty, int call) {
    LogThroughADay(faulty);
    EXPECT_THAT(faulty.Errors(), Each(L"Error: Unable to send log message! Error -2147467259"));
    const int failures = Failures(call, kMessagesOfDay);
    EXPECT_THAT(faulty.Errors(), SizeIs(failures));
    Texts expected = DayOf(kThreadsOfDay);
    const auto first = expected.begin() + (call - 1);
    expected.erase(first, first + failures);
    EXPECT_THAT(faulty.Taken(), ElementsAreArray(expected));
  });
}

TEST_P(LoggerFaults, AMissingServiceIsReportedToTheDebuggerAndLosesNoMessageThatIsNotForIt) {
  static constexpr int kThreads = 3;
  Loop(Operation::Connect, kThreads, [](FaultyMachine& faulty, int call) {
    for (int thread = 0; thread < kThreads; ++thread) {
      faulty.Log(Format(L"out of range {}", thread), LogLevel::Error, LogSource{99});
      faulty.WaitForRest();
    }
    faulty.logger->Stop();
    EXPECT_THAT(faulty.machine.DebuggerReports(),
                Each(L"Unable to Create Instance of TraceLogManager! Error -2147467259"));
    const int failures = Failures(call, kThreads);
    EXPECT_THAT(faulty.machine.DebuggerReports(), SizeIs(failures));
    EXPECT_THAT(faulty.Errors(), IsEmpty()) << "It is told to the debugger only.";
    EXPECT_THAT(faulty.Reports(L"Info:  "), SizeIs(2 * kThreads));
    const FakeLogMachine::Counts counts = faulty.machine.Happened();
    EXPECT_EQ(counts.leaves, kThreads);
    EXPECT_EQ(counts.connections, kThreads - failures);
    EXPECT_EQ(counts.disconnections, kThreads - failures);
  });
}

INSTANTIATE_TEST_SUITE_P(Fault, LoggerFaults, testing::Values(Mode::Once, Mode::FromThenOn),
                         [](const auto& mode) { return mode.param == Mode::Once ? "Once" : "FromThenOn"; });

TEST(LoggerFaultsDeathTest, AServiceThatIsMissingForAnyThreadEndsTheProcessWithTheNextMessage) {
  for (int call = 1; call <= kThreadsOfDay; ++call) {
    EXPECT_DEATH_IF_SUPPORTED(
        {
          FaultyMachine faulty(Operation::Connect, call, Mode::Once);
          LogThroughADay(faulty);
        },
        "NoLogService");
  }
  FaultyMachine faulty(Operation::Connect, kThreadsOfDay + 1, Mode::Once);
  LogThroughADay(faulty);
  EXPECT_FALSE(faulty.WasHit());
  EXPECT_THAT(faulty.Taken(), ElementsAreArray(DayOf(kThreadsOfDay)));
}

}  // namespace
