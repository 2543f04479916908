#include "NetUtilities/Logger/Logger.h"

#include <gmock/gmock.h>

#include "tests/support/LogCapture.h"

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Logger, DropsAnEmptyMessageBeforeAskingForTheLevel) {
  const LogCapture log;
  static int asked;
  asked = 0;
  logPlatform.traceLevel = [] { return ++asked, uint16_t{4}; };
  Logger logger;
  logger.Enqueue(LogSource::General, LogLevel::Error, L"");
  EXPECT_EQ(asked, 0);
  logger.Enqueue(LogSource::General, LogLevel::Error, L"x");
  logger.Enqueue(LogSource::General, LogLevel::Error, L"y");
  EXPECT_EQ(asked, 1);
}

TEST(Logger, DropsMessagesAboveTheTraceLevel) {
  const LogCapture log;
  logPlatform.traceLevel = [] { return uint16_t{3}; };
  Logger logger;
  logger.Enqueue(LogSource::General, LogLevel::Detail, L"detail");
  logger.Enqueue(LogSource::Database, LogLevel::Info, L"info");
  EXPECT_THAT(log.Messages(), ElementsAre(LogCapture::Message{LogSource::Database, LogLevel::Info, L"info"}));
}

TEST(Logger, UsesTheGlobalThresholdForSourcesOutOfRange) {
  const LogCapture log;
  logPlatform.traceLevel = [] { return uint16_t{2}; };
  Logger logger;
  logger.Enqueue(LogSource{37}, LogLevel::Info, L"dropped");
  EXPECT_THAT(log.Messages(), IsEmpty());
  logger.Enqueue(LogSource{0xffff}, LogLevel::Error, L"kept");
  EXPECT_EQ(log.Messages().size(), 1u);
}

TEST(Logger, SurvivesAMessageFromReadingTheTraceLevel) {
  const LogCapture log;
  static Logger* current;
  Logger logger;
  current = &logger;
  logPlatform.traceLevel = [] {
    current->Enqueue(LogSource::General, LogLevel::Error, L"cannot read the level");
    return uint16_t{4};
  };
  logger.Enqueue(LogSource::General, LogLevel::Info, L"first");
  current = nullptr;
  EXPECT_THAT(log.Messages(), ElementsAre(LogCapture::Message{LogSource::General, LogLevel::Info, L"first"}));
}

TEST(Log, UsesTheGeneralSourceByDefault) {
  const LogCapture log;
  Log(LogLevel::Error, L"plain");
  EXPECT_THAT(log.Messages(), ElementsAre(LogCapture::Message{LogSource::General, LogLevel::Error, L"plain"}));
}
