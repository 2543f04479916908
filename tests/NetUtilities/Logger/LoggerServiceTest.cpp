// The Logger and the real logging service.

#include <windows.h>

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "NetUtilities/Logger/Logger.h"
#include "NetUtilities/Logger/LogPlatform.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/programs/LoggingModule.h"
#include "tests/support/ClientProcess.h"
#include "tests/support/Endurance.h"
#include "tests/support/LoadedModule.h"
#include "tests/support/NumberedMessages.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/RegisteredService.h"
#include "tests/support/ServiceLog.h"
#include "tests/support/Substituted.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/WaitUntil.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::Pair;
using testing::SizeIs;
using testing::StartsWith;

constexpr wchar_t kModule[] = L"LoggingModule.dll";

// Lines that come from any thread.
class Lines {
 public:
  void Add(std::wstring_view line) {
    const std::scoped_lock lock(mutex_);
    lines_.emplace_back(line);
  }

  std::vector<std::wstring> All() const {
    const std::scoped_lock lock(mutex_);
    return lines_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::wstring> lines_;
};

Lines* reports;

class LoggerServiceTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { registration.emplace(); }
  static void TearDownTestSuite() { registration.reset(); }

  LoggerServiceTest() {
    reports = &reports_;
    platform_->reportToFile = [](std::wstring_view line) { reports->Add(line); };
    client_.Remove(L"TraceLevel");
    sources_.Remove(L"28");
  }
  ~LoggerServiceTest() override { logger_->Stop(); }

  void Log(const std::wstring& text, LogLevel level = LogLevel::Error, LogSource source = LogSource::General) {
    logger_->Enqueue(source, level, text);
  }

  // Lets the thread ask the service for the levels, which are these for the global and for source 28.
  void TakeLevels(uint16_t global, uint16_t database) {
    client_.SetDword(L"TraceLevel", global);
    sources_.SetDword(L"28", database);
    // The machine's own level, until the service is asked.
    platform_->traceLevel = [] { return uint16_t{3}; };
    logger_->Hold();
    logger_->Initialize();
    EXPECT_TRUE(WaitUntil([&] {
      return Highest(LogSource::General) == global &&
             Highest(LogSource::Database) == (database != 0 ? database : global);
    }));
  }

  // What the service has written, as "SOURCE LEVEL MESSAGE".
  std::vector<std::string> Messages() const {
    constexpr size_t kSourceAndLevel = 5;
    std::vector<std::string> messages;
    std::istringstream lines(log_.Text());
    for (std::string line; std::getline(lines, line, '\r'); lines.get()) {
      const size_t prefixEnd = line.find(": ");
      EXPECT_NE(prefixEnd, std::string::npos) << line;
      messages.push_back(line.substr(0, kSourceAndLevel) + line.substr(prefixEnd + 2));
    }
    return messages;
  }

  static std::optional<RegisteredService> registration;

  Substituted<LogPlatform> platform_{logPlatform};
  TestRegistryKey client_{HKEY_LOCAL_MACHINE, kClientKey};
  TestRegistryKey sources_{HKEY_LOCAL_MACHINE, std::wstring(kClientKey) + L"\\TraceLevels"};
  Lines reports_;
  ServiceLog log_;
  LogFilter filter_;
  const std::shared_ptr<Logger> logger_ = std::make_shared<Logger>(filter_);

 private:
  // The highest level that passes.
  uint16_t Highest(LogSource source) const {
    uint16_t level = 0;
    while (level < 9 && filter_.Passes(source, LogLevel{static_cast<uint16_t>(level + 1)})) ++level;
    return level;
  }
};

std::optional<RegisteredService> LoggerServiceTest::registration;

}  // namespace

TEST_F(LoggerServiceTest, EachLineTellsItsTimeProcessAndThread) {
  SYSTEMTIME before{};
  GetLocalTime(&before);
  DWORD threadId = 0;
  std::jthread([&] {
    threadId = GetCurrentThreadId();
    Log(L"whence", LogLevel::Info, LogSource::Database);
  }).join();
  logger_->Stop();
  EXPECT_NE(threadId, GetCurrentThreadId());
  const std::string line = log_.Text();
  const std::string ids = ToUtf8(Format(L" {:05x}-{:05x}: ", GetCurrentProcessId(), threadId));
  EXPECT_THAT(line, testing::MatchesRegex(R"(28 3 \d\d/\d\d \d\d:\d\d:\d\d\.\d\d\d \w+-\w+: whence\s+)"));
  EXPECT_THAT(line, testing::EndsWith(ids + "whence\r\n"));
  // To the minute; the time goes on meanwhile.
  SYSTEMTIME after{};
  GetLocalTime(&after);
  const auto minute = [](const SYSTEMTIME& time) {
    return ToUtf8(Format(L"28 3 {:02}/{:02} {:02}:{:02}:", time.wMonth, time.wDay, time.wHour, time.wMinute));
  };
  EXPECT_THAT(line, testing::AnyOf(StartsWith(minute(before)), StartsWith(minute(after))));
}

TEST_F(LoggerServiceTest, LinesOfASourceThatDoesNotExistStayAway) {
  Log(L"astray", LogLevel::Error, LogSource{37});
  Log(L"home");
  logger_->Stop();
  EXPECT_THAT(Messages(), ElementsAre(" 1 2 home"));
  EXPECT_THAT(reports_.All(), ElementsAre(L"Info:  ********** Logging source 37 out of range! **********",
                                          testing::AllOf(StartsWith(L"Info:  "), testing::EndsWith(L": astray"))));
}

TEST_F(LoggerServiceTest, Level0AlwaysPasses) {
  TakeLevels(1, 0);
  Log(L"error");
  Log(L"always", LogLevel{0});
  logger_->Stop();
  EXPECT_THAT(Messages(), ElementsAre(" 1 0 always"));
}

TEST_F(LoggerServiceTest, AHigherLevelOfTheServiceHoldsFromTheFirstPassOn) {
  TakeLevels(5, 0);
  Log(L"trace", LogLevel::Trace);
  logger_->Stop();
  EXPECT_THAT(Messages(), ElementsAre(" 1 5 trace"));
}

TEST_F(LoggerServiceTest, ALowerLevelOfTheServiceHoldsFromTheFirstPassOn) {
  TakeLevels(2, 0);
  Log(L"info", LogLevel::Info);
  Log(L"error", LogLevel::Error);
  logger_->Stop();
  EXPECT_THAT(Messages(), ElementsAre(" 1 2 error"));
}

TEST_F(LoggerServiceTest, AHigherLevelOfASourceHoldsInPlaceOfTheGlobalOne) {
  TakeLevels(2, 5);
  Log(L"database", LogLevel::Trace, LogSource::Database);
  Log(L"general", LogLevel::Info);
  logger_->Stop();
  EXPECT_THAT(Messages(), ElementsAre("28 5 database"));
}

TEST_F(LoggerServiceTest, ALowerLevelOfASourceHoldsInPlaceOfTheGlobalOne) {
  TakeLevels(4, 1);
  Log(L"database", LogLevel::Error, LogSource::Database);
  Log(L"general", LogLevel::Detail);
  logger_->Stop();
  EXPECT_THAT(Messages(), ElementsAre(" 1 4 general"));
}

TEST_F(LoggerServiceTest, DeliversWhatIsQueuedBeforeItStopsAndNothingThatComesLater) {
  constexpr int kMessages = 1'000;
  for (int message = 0; message < kMessages; ++message) Log(Format(L"queued {}", message));
  EXPECT_THAT(log_.Text(), Not(HasSubstr("queued 999\r\n"))) << "All was delivered before.";
  logger_->Stop();
  EXPECT_THAT(CountNumberedMessages(log_.Text(), "queued"), ElementsAre(Pair("queued", kMessages)));
  EXPECT_THAT(Messages().back(), " 1 2 queued 999");
  Log(L"later");
  logger_->Stop();
  const auto other = std::make_shared<Logger>(filter_);
  other->Enqueue(LogSource::General, LogLevel::Error, L"latest");
  other->Stop();
  EXPECT_THAT(Messages(), SizeIs(kMessages + 1));
  EXPECT_THAT(Messages().back(), " 1 2 latest");
}

TEST_F(LoggerServiceTest, AKilledServiceCostsMessagesAndAnErrorLineForEachButNotTheClient) {
  InOwnProcess([this] {
    int logged = 0;
    {
      const LoadedModule module(kModule);
      const auto log = module.Find<decltype(&LogNumbers)>("LogNumbers");
      const auto hold = module.Find<decltype(&HoldService)>("HoldService");
      module.Find<decltype(&SendReportsTo)>("SendReportsTo")([](const wchar_t* line) { reports->Add(line); });
      hold(true);
      std::atomic<bool> enough = false;
      std::jthread client([&] {
        for (; !enough; ++logged) {
          log(1, 2, L"killed", 1);
          Sleep(1);
        }
      });
      EXPECT_TRUE(log_.Has("killed 0"));
      RegisteredService::KillServers();
      EXPECT_TRUE(WaitUntil([this] { return reports_.All().size() >= 100; }));
      enough = true;
      client.join();
      hold(false);
    }
    EXPECT_TRUE(WaitUntil([] { return GetModuleHandleW(kModule) == nullptr; }));

    const std::vector<std::wstring> errors = reports_.All();
    EXPECT_THAT(errors, Each(StartsWith(L"Error: Unable to send log message! Error -")));
    // The message that was on its way when the service was killed may be both written and reported.
    const size_t delivered = Messages().size();
    EXPECT_THAT(delivered + errors.size(), testing::AnyOf(logged, logged + 1));
  });
  // For this process, too. Whoever comes now has a new server.
  RegisteredService::KillServers();
  EXPECT_EQ(ClientProcess(L"after 1 1").WaitForEnd(), ClientProcess::kDone);
  EXPECT_THAT(log_.Text(), HasSubstr("after 0 0"));
}

TEST_F(LoggerServiceTest, EveryMessageOfManyProcessesIsThereOnceAndInOrder) {
  constexpr int kProcesses = 8;
  constexpr int kThreads = 4;
  const int messages = FullSize() ? 5'000 : 125;  // of each thread
  std::vector<ClientProcess> clients;
  for (int process = 0; process < kProcesses; ++process) {
    clients.emplace_back(Format(L"client-{} {} {}", process, kThreads, messages));
  }
  constexpr DWORD kLimitMilliseconds = 600'000;
  for (ClientProcess& client : clients) EXPECT_EQ(client.WaitForEnd(kLimitMilliseconds), ClientProcess::kDone);

  const std::map<std::string, int> counts = CountNumberedMessages(log_.Text(), "client-");
  EXPECT_THAT(counts, SizeIs(kProcesses * kThreads));
  EXPECT_THAT(counts, Each(Pair(testing::_, messages)));
}
