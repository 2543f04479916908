#include "NetUtilities/Logger/Logger.h"

#include <gmock/gmock.h>

#include <atomic>

#include "NetUtilities/Text/Format.h"
#include "tests/support/FakeLogMachine.h"
#include "tests/support/WaitUntil.h"

namespace {

using testing::Contains;
using testing::ElementsAre;

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

using namespace std::chrono_literals;
using Sent = FakeLogMachine::Sent;

constexpr int32_t kFailure = -2147221164;
constexpr wchar_t kPrefix[] = L"01/03 09:05:07.004 001a2-0003b: ";

class LoggerTest : public testing::Test {
 protected:
  ~LoggerTest() override { logger->Stop(); }

  void Log(const std::wstring& text, LogLevel level = LogLevel::Error, LogSource source = LogSource::General) {
    logger->Enqueue(source, level, text);
  }

  // Waits until the thread has let go of the service. It does so a moment after the last message.
  void WaitForEndOfThread(int times = 1) {
    EXPECT_TRUE(WaitUntil([&] { return machine.Happened().leaves == times; }));
  }

  std::vector<std::wstring> TextsSent() const {
    std::vector<std::wstring> texts;
    for (const Sent& sent : machine.AllSent()) texts.push_back(sent.text.substr(std::size(kPrefix) - 1));
    return texts;
  }

  FakeLogMachine machine;
  LogFilter filter;
  const std::shared_ptr<Logger> logger = std::make_shared<Logger>(filter);
};

TEST_F(LoggerTest, DropsAnEmptyMessageBeforeTheThreadIsStarted) {
  Log(L"");
  EXPECT_EQ(machine.Happened().starts, 0);
  EXPECT_FALSE(filter.IsSet());
}

TEST_F(LoggerTest, DeliversCompleteLinesInOrder) {
  Log(L"first", LogLevel::Detail, LogSource::Database);
  Log(L"second", LogLevel::Fatal);
  logger->Stop();
  EXPECT_THAT(machine.AllSent(), ElementsAre(Sent{28, 4, std::wstring(kPrefix) + L"first"},
                                             Sent{1, 1, std::wstring(kPrefix) + L"second"}));
}

TEST_F(LoggerTest, DropsTraceMessagesWithoutATraceLevel) {
  Log(L"trace", LogLevel::Trace);
  Log(L"detail", LogLevel::Detail);
  logger->Stop();
  EXPECT_THAT(TextsSent(), ElementsAre(L"detail"));
}

TEST_F(LoggerTest, StartsItsThreadAlsoForAMessageThatIsFilteredOut) {
  machine.globalLevel = 5;
  Log(L"perhaps too early", LogLevel::Trace);
  EXPECT_TRUE(WaitUntil([&] { return filter.Passes(LogSource::General, LogLevel::Trace); }))
      << "The service asks for more.";
  Log(L"kept", LogLevel::Trace);
  logger->Stop();
  EXPECT_THAT(TextsSent(), Contains(L"kept"));
}

TEST_F(LoggerTest, AlwaysPassesLevel0) {
  machine.traceLevel = machine.globalLevel = 0;
  Log(L"fatal", LogLevel::Fatal);
  Log(L"always", LogLevel{0});
  logger->Stop();
  EXPECT_THAT(TextsSent(), ElementsAre(L"always"));
}

TEST_F(LoggerTest, TakesTheLevelsFromTheServiceAtOnce) {
  machine.globalLevel = 2;
  machine.sourceLevels[28] = 5;
  machine.sourceLevels[0] = 5;
  EXPECT_TRUE(logger->Initialize());
  EXPECT_TRUE(WaitUntil([&] { return !filter.Passes(LogSource::General, LogLevel::Info); }));
  EXPECT_TRUE(filter.Passes(LogSource::Database, LogLevel::Trace));
  EXPECT_FALSE(filter.Passes(LogSource{0}, LogLevel::Info)) << "Source 0 is not asked for.";
  logger->Stop();
  const FakeLogMachine::Counts counts = machine.Happened();
  EXPECT_EQ(counts.globalLevelQueries, 1);
  ASSERT_THAT(counts.sourceLevelQueries, SizeIs(36));
  EXPECT_EQ(counts.sourceLevelQueries.front(), 1u);
  EXPECT_EQ(counts.sourceLevelQueries.back(), 36u);
}

TEST_F(LoggerTest, AsksForTheLevelsAgainAfter61SecondsAndOnlyForAMessage) {
  logger->Hold();
  size_t messages = 0;
  const auto queriesAfterMessageAt = [&](std::chrono::nanoseconds time) {
    machine.now = time;
    Log(L"x");
    machine.WaitForSent(++messages);
    // The question comes after the delivery, before the next one.
    Log(L"y");
    machine.WaitForSent(++messages);
    return machine.Happened().globalLevelQueries;
  };
  constexpr auto kStart = 5s;
  EXPECT_EQ(queriesAfterMessageAt(kStart), 1);
  EXPECT_EQ(queriesAfterMessageAt(kStart + 60s), 1);
  EXPECT_EQ(queriesAfterMessageAt(kStart + 60s + 999ms), 1);
  machine.now = kStart + 500s;
  EXPECT_EQ(machine.Happened().globalLevelQueries, 1) << "Nobody has logged anything.";
  EXPECT_EQ(queriesAfterMessageAt(kStart + 61s), 2);
  logger->Release();
}

TEST_F(LoggerTest, ReportsASourceThatDoesNotExistAndItsMessage) {
  Log(L"lost", LogLevel::Error, LogSource{37});
  logger->Stop();
  EXPECT_THAT(machine.AllSent(), IsEmpty());
  EXPECT_THAT(machine.FileReports(), ElementsAre(L"Info:  ********** Logging source 37 out of range! **********",
                                                 L"Info:  " + std::wstring(kPrefix) + L"lost"));
}

TEST_F(LoggerTest, DeliversWhatIsQueuedBeforeItStops) {
  constexpr int kMessages = 5'000;
  for (int message = 0; message < kMessages; ++message) Log(std::to_wstring(message));
  logger->Stop();
  ASSERT_THAT(machine.AllSent(), SizeIs(kMessages));
  EXPECT_EQ(TextsSent().back(), std::to_wstring(kMessages - 1));
}

TEST_F(LoggerTest, DeliversWhatIsQueuedWhenItIsFlushed) {
  logger->Hold();
  constexpr size_t kMessages = 1'000;
  for (size_t message = 0; message < kMessages; ++message) Log(L"x");
  logger->Flush(20s);
  EXPECT_THAT(machine.AllSent(), SizeIs(kMessages));
  logger->Release();
}

TEST_F(LoggerTest, IsNotFlushedForEver) {
  std::atomic<bool> stuck = true;
  machine.whenSent = [&] { stuck.wait(true); };
  Log(L"x");
  const auto start = std::chrono::steady_clock::now();
  logger->Flush(20ms);
  const auto taken = std::chrono::steady_clock::now() - start;
  EXPECT_GE(taken, 20ms) << "The message is not delivered yet.";
  EXPECT_LT(taken, 10s);
  stuck = false;
  stuck.notify_all();
  logger->Stop();
}

TEST_F(LoggerTest, HasNothingToFlushWithoutAThread) {
  const auto start = std::chrono::steady_clock::now();
  logger->Flush(20s);
  machine.enterResult = kFailure;
  Log(L"stays");
  logger->Flush(20s);
  EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
  EXPECT_THAT(machine.AllSent(), IsEmpty());
}

TEST_F(LoggerTest, NeverDeliversWhatIsLoggedAfterItHasStopped) {
  Log(L"before");
  logger->Stop();
  const int starts = machine.Happened().starts;
  Log(L"after");
  logger->Stop();
  EXPECT_THAT(TextsSent(), ElementsAre(L"before"));
  EXPECT_EQ(machine.Happened().starts, starts);
}

TEST_F(LoggerTest, NeedsNotHaveBeenStartedToStop) {
  logger->Stop();
  EXPECT_EQ(machine.Happened().starts, 0);
}

TEST_F(LoggerTest, EndsItsThreadWhenNobodyLogsAndStartsAnother) {
  Log(L"first");
  WaitForEndOfThread(1);
  Log(L"second");
  WaitForEndOfThread(2);
  EXPECT_THAT(TextsSent(), ElementsAre(L"first", L"second"));
  const FakeLogMachine::Counts counts = machine.Happened();
  EXPECT_EQ(counts.connections, 2);
  EXPECT_EQ(counts.disconnections, 2) << "Nothing is left of the service between messages.";
  EXPECT_EQ(counts.globalLevelQueries, 1) << "The levels are still fresh.";
}

TEST_F(LoggerTest, KeepsItsThreadWhileItIsHeld) {
  logger->Hold();
  Log(L"first");
  EXPECT_TRUE(machine.WaitForSent(1));
  EXPECT_FALSE(WaitUntil([&] { return machine.Happened().leaves > 0; }, 100ms));
  Log(L"second");
  EXPECT_TRUE(machine.WaitForSent(2));
  EXPECT_EQ(machine.Happened().starts, 1);
  logger->Release();
  WaitForEndOfThread();
}

TEST_F(LoggerTest, ReachesForTheServiceOnlyAfterTheHeadStart) {
  const auto start = std::chrono::steady_clock::now();
  logger->Hold(50ms);
  Log(L"first");
  Log(L"second");
  EXPECT_TRUE(machine.WaitForSent(2));
  EXPECT_GE(std::chrono::steady_clock::now() - start, 50ms);
  EXPECT_THAT(TextsSent(), ElementsAre(L"first", L"second"));
  logger->Release();
}

TEST_F(LoggerTest, DoesNothingWithTheServiceDuringTheHeadStart) {
  logger->Hold(20s);
  Log(L"x");
  EXPECT_FALSE(
      WaitUntil([&] { return machine.Happened().connections > 0 || machine.Happened().globalLevelQueries > 0; }, 50ms));
  logger->Stop();
  EXPECT_THAT(machine.AllSent(), SizeIs(1)) << "It does not outlast the thread.";
  logger->Release();
}

TEST_F(LoggerTest, GivesNoHeadStartToThoseWhoFlushOrLetGo) {
  const auto start = std::chrono::steady_clock::now();
  logger->Hold(20s);
  Log(L"first");
  logger->Flush(10s);
  EXPECT_THAT(machine.AllSent(), SizeIs(1));
  logger->Release();
  WaitForEndOfThread(1);

  logger->Hold(20s);
  Log(L"second");
  logger->Release();
  WaitForEndOfThread(2);
  EXPECT_THAT(TextsSent(), ElementsAre(L"first", L"second"));
  EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
}

TEST_F(LoggerTest, GivesAHeadStartOnlyBeforeItsThreadDelivers) {
  logger->Hold();
  Log(L"first");
  EXPECT_TRUE(machine.WaitForSent(1));
  logger->Hold(60s);
  Log(L"second");
  EXPECT_TRUE(machine.WaitForSent(2)) << "The service is there already.";
  logger->Release();
  logger->Release();
}

TEST_F(LoggerTest, WakesAThreadThatHasGoneToSleep) {
  logger->Hold();
  Log(L"first");
  EXPECT_TRUE(machine.WaitForSent(1));
  EXPECT_FALSE(WaitUntil([&] { return machine.Happened().leaves > 0; }, 2'500ms));
  Log(L"second");
  EXPECT_TRUE(machine.WaitForSent(2));
  logger->Release();
  WaitForEndOfThread();
}

TEST_F(LoggerTest, ReadsTheClockWhenTheCounterHasMovedOn) {
  Log(L"first");
  machine.localTime.millisecond = 5;
  machine.ticksPerReading = 300'000;
  Log(L"not yet");
  Log(L"then");
  machine.localTime.millisecond = 6;
  machine.ticksPerReading = static_cast<uint64_t>(-1);
  Log(L"a counter that begins again");
  logger->Stop();
  std::vector<std::wstring> times;
  for (const Sent& sent : machine.AllSent()) times.push_back(sent.text.substr(0, 18));
  EXPECT_THAT(times,
              ElementsAre(L"01/03 09:05:07.004", L"01/03 09:05:07.004", L"01/03 09:05:07.005", L"01/03 09:05:07.006"));
}

TEST_F(LoggerTest, ReportsAThreadThatCannotBeStartedAndTriesAgainWithTheNextMessage) {
  machine.startResult = 8;
  EXPECT_FALSE(logger->Initialize());
  EXPECT_THAT(machine.FileReports(), ElementsAre(L"Error: Unable to create Logger thread - 'text of 8' Error 8"));
  Log(L"waits");
  EXPECT_THAT(machine.AllSent(), IsEmpty());
  machine.startResult = 0;
  Log(L"comes");
  logger->Stop();
  EXPECT_THAT(TextsSent(), ElementsAre(L"waits", L"comes"));
}

TEST_F(LoggerTest, ReportsWhenComCannotBeInitializedAndKeepsTheRecords) {
  machine.enterResult = kFailure;
  Log(L"first");
  logger->Stop();
  EXPECT_THAT(machine.FileReports(),
              ElementsAre(L"Error: Unable to initialize COM for the TraceLogManager! Error -2147221164"));
  EXPECT_EQ(machine.Happened().connections, 0);
  EXPECT_EQ(machine.Happened().leaves, 0) << "There was nothing to undo.";
}

TEST_F(LoggerTest, StartsNoSecondThreadWhenTheFirstCouldNotWork) {
  machine.enterResult = kFailure;
  logger->Initialize();
  EXPECT_TRUE(WaitUntil([&] { return machine.FileReports().size() == 1; }));
  logger->Stop();
  Log(L"later");
  EXPECT_EQ(machine.Happened().starts, 1);
}

TEST_F(LoggerTest, LeavesComWhereItWasInitializedAlready) {
  machine.enterResult = 1;  // S_FALSE
  Log(L"x");
  logger->Stop();
  EXPECT_THAT(TextsSent(), ElementsAre(L"x"));
  EXPECT_EQ(machine.Happened().leaves, 1);
}

TEST_F(LoggerTest, TriesToStartItsThreadOnceForEachMessage) {
  machine.startResult = 8;
  Log(L"first");
  EXPECT_EQ(machine.Happened().starts, 1);
  EXPECT_THAT(machine.FileReports(), SizeIs(1));
  Log(L"second");
  EXPECT_EQ(machine.Happened().starts, 2);
  EXPECT_THAT(machine.FileReports(), SizeIs(2));
  logger->Stop();
  EXPECT_THAT(machine.AllSent(), IsEmpty());
}

TEST_F(LoggerTest, ReportsAMissingServiceToTheDebuggerOnly) {
  machine.connectResult = kFailure;
  logger->Initialize();
  WaitForEndOfThread();
  EXPECT_THAT(machine.DebuggerReports(),
              ElementsAre(L"Unable to Create Instance of TraceLogManager! Error -2147221164"));
  EXPECT_THAT(machine.FileReports(), IsEmpty());
  EXPECT_EQ(machine.Happened().globalLevelQueries, 0);
}

TEST_F(LoggerTest, TakesTheMachinesLevelWhenTheServiceDoesNotTell) {
  machine.globalLevelResult = kFailure;
  machine.traceLevel = 3;
  machine.sourceLevels[28] = 5;
  logger->Initialize();
  WaitForEndOfThread();
  EXPECT_THAT(machine.FileReports(),
              ElementsAre(L"Error: Unable to get current log level from TraceLogManager! Error -2147221164"));
  EXPECT_TRUE(filter.Passes(LogSource::General, LogLevel::Info));
  EXPECT_FALSE(filter.Passes(LogSource::General, LogLevel::Detail));
  EXPECT_TRUE(filter.Passes(LogSource::Database, LogLevel::Trace)) << "Sources are asked for all the same.";
}

TEST_F(LoggerTest, KeepsALevelThatTheServiceDoesNotTell) {
  filter.SetSource(28, 1);
  machine.sourceLevelResults[28] = kFailure;
  logger->Initialize();
  WaitForEndOfThread();
  EXPECT_FALSE(filter.Passes(LogSource::Database, LogLevel::Error));
  EXPECT_THAT(machine.FileReports(), IsEmpty());
}

TEST_F(LoggerTest, ReportsAMessageThatTheServiceRejectsAndGoesOn) {
  machine.sendResult = kFailure;
  Log(L"first");
  Log(L"second");
  logger->Stop();
  EXPECT_THAT(TextsSent(), ElementsAre(L"first", L"second"));
  EXPECT_THAT(machine.FileReports(), ElementsAre(L"Error: Unable to send log message! Error -2147221164",
                                                 L"Error: Unable to send log message! Error -2147221164"));
}

TEST_F(LoggerTest, TellsOfItsRefreshesWhenItIsTraced) {
  machine.tracesLogger = true;
  logger->Initialize();
  WaitForEndOfThread();
  EXPECT_THAT(machine.FileReports(),
              ElementsAre(L"Debug: Updating Global log levels from service.",
                          L"Debug: Updating Source log levels from service.", L"Debug: Done updating from service."));
}

TEST_F(LoggerTest, TracesItselfToTheDebuggerOnly) {
  machine.tracesLogger = true;
  {
    const auto traced = std::make_shared<Logger>(filter);
    traced->Enqueue(LogSource::General, LogLevel::Error, L"x");
    traced->Stop();
  }
  std::vector<std::wstring> enters;
  for (const std::wstring& line : machine.DebuggerReports()) {
    EXPECT_THAT(line, HasSubstr(L" -- host.exe -> module.dll Logger pid 001a2 tid 0003b"));
    if (line.starts_with(L"Enter ==> ")) enters.push_back(line);
  }
  for (const wchar_t* operation : {L"Logger::Logger(", L"Logger::Initialize(", L"Logger::LoggerThread(",
                                   L"Logger::InitializeLogManager(", L"Logger::Stop(", L"Logger::~Logger("}) {
    EXPECT_THAT(enters, Contains(HasSubstr(operation)));
  }
  EXPECT_EQ(machine.DebuggerReports().size(), 2 * enters.size()) << "Each has an end, too.";
  EXPECT_THAT(TextsSent(), ElementsAre(L"x")) << "None of it is in the log.";
}

TEST_F(LoggerTest, KeepsWhatReadingTheTraceLevelHasToSay) {
  static Logger* reading;
  reading = logger.get();
  logPlatform.traceLevel = [] {
    reading->Enqueue(LogSource::General, LogLevel::Error, L"cannot read the level");
    reading->Enqueue(LogSource::General, LogLevel::Info, L"whether this is wanted is not known yet");
    return uint16_t{4};
  };
  Log(L"first");
  logger->Stop();
  EXPECT_THAT(TextsSent(), ElementsAre(L"cannot read the level", L"first"));
}

TEST_F(LoggerTest, KeepsWhatTheReportOfItsFailedStartHasToSay) {
  static Logger* starting;
  starting = logger.get();
  machine.startResult = 8;
  logPlatform.reportToFile = [](std::wstring_view) {
    starting->Enqueue(LogSource::General, LogLevel::Error, L"cannot report either");
  };
  EXPECT_FALSE(logger->Initialize());
  machine.startResult = 0;
  Log(L"first");
  logger->Stop();
  EXPECT_THAT(TextsSent(), ElementsAre(L"cannot report either", L"first"));
}

TEST_F(LoggerTest, WaitsForNobodyWhenTheProcessEnds) {
  threadPlatform.processEnds = [] { return true; };
  logger->Hold();
  Log(L"x");
  logger->Flush(20s);
  logger->Stop();     // would wait for ever: the thread is held
  logger->Release();  // does nothing
  EXPECT_FALSE(WaitUntil([&] { return machine.Happened().leaves > 0; }, 100ms));
  threadPlatform.processEnds = [] { return false; };
  logger->Release();
}

TEST(LoggerDeathTest, TheFirstMessageForAMissingServiceEndsTheProcess) {
  EXPECT_DEATH_IF_SUPPORTED(
      {
        FakeLogMachine machine;
        machine.connectResult = kFailure;
        LogFilter filter;
        const auto logger = std::make_shared<Logger>(filter);
        logger->Enqueue(LogSource::General, LogLevel::Error, L"x");
        logger->Stop();
      },
      "NoLogService");
}

TEST(LoggerDeathTest, AMessageOfASourceThatDoesNotExistNeedsNoService) {
  FakeLogMachine machine;
  machine.connectResult = kFailure;
  LogFilter filter;
  const auto logger = std::make_shared<Logger>(filter);
  logger->Enqueue(LogSource{99}, LogLevel::Error, L"x");
  logger->Stop();
  EXPECT_THAT(machine.FileReports(), SizeIs(2));
}

}  // namespace
