#include "WaylineDll/Store/Failures.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include "tests/support/LogCapture.h"

TEST(StoreFailures, ReasonsNeedNoConnection) {
  const LogCapture log;
  EXPECT_EQ(ReasonText(nullptr, SQLITE_FULL), L"the disk is full");
  EXPECT_EQ(ReasonText(nullptr, SQLITE_MISUSE), L"something unexpected has happened (error 21)");
}

TEST(StoreFailures, ReasonsHaveNoWordsOfSqlite) {
  const LogCapture log;
  for (int code = SQLITE_ERROR; code < SQLITE_NOTICE; ++code) {
    for (const int extended : {0, 1, 5, 6, 8}) {
      EXPECT_NE(ReasonText(nullptr, code | (extended << 8)), FromUtf8(sqlite3_errstr(code | (extended << 8)))) << code;
    }
  }
}

TEST(StoreFailures, WhatSqliteSaysIsLogged) {
  const LogCapture log;
  ReasonText(nullptr, SQLITE_MISUSE);
  EXPECT_THAT(log.Messages(), testing::ElementsAre(LogCapture::Message{LogSource::Database, LogLevel::Error,
                                                                       L"(21) bad parameter or other API misuse"}));
}

TEST(StoreFailures, AReasonOfTheFileSystemIsInOurWordsToo) {
  const LogCapture log;
  EXPECT_EQ(ReasonText(std::make_error_code(std::errc::no_space_on_device)), L"the disk is full");
  EXPECT_EQ(ReasonText(std::make_error_code(std::errc::permission_denied)),
            L"the file is protected, in use, or in a folder that does not exist");
  EXPECT_EQ(log.Messages().size(), 2u);
}
