#include "WaylineDll/Store/Failures.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <utility>

#include "NetUtilities/Text/Utf8.h"
#include "tests/support/LogCapture.h"

TEST(StoreFailures, ReasonsNeedNoConnection) {
  const LogCapture log;
  EXPECT_EQ(ReasonText(nullptr, SQLITE_FULL), L"the disk is full");
  EXPECT_EQ(ReasonText(nullptr, SQLITE_MISUSE), L"something unexpected has happened (error 21)");
}

TEST(StoreFailures, EveryCodeHasItsReason) {
  const LogCapture log;
  const std::pair<int, const wchar_t*> reasons[] = {
      {SQLITE_BUSY, L"the settings database is in use by another program"},
      {SQLITE_LOCKED, L"the settings database is in use by another program"},
      {SQLITE_READONLY, L"the settings database is read-only"},
      {SQLITE_READONLY_DIRECTORY, L"the folder of the settings database cannot be written to"},
      {SQLITE_READONLY_DBMOVED, L"the settings database has been moved or deleted"},
      {SQLITE_READONLY_ROLLBACK,
       L"a save was interrupted, and whoever opens the file first must be allowed to write it"},
      {SQLITE_FULL, L"the disk is full"},
      {SQLITE_NOTADB, L"it is not a settings database of Wayline"},
      {SQLITE_CORRUPT, L"the settings database is damaged"},
      {SQLITE_CANTOPEN, L"the file is protected, in use, or in a folder that does not exist"},
      {SQLITE_ERROR, L"the settings database is incomplete"},
      {SQLITE_IOERR, L"the settings database cannot be read or written"},
      {SQLITE_IOERR_WRITE, L"the settings database cannot be read or written"},
      {SQLITE_NOMEM, L"there is not enough memory"},
      {SQLITE_CONSTRAINT, L"the settings database does not allow one of the values"},
      {SQLITE_CONSTRAINT_CHECK, L"the settings database does not allow one of the values"},
      {SQLITE_MISMATCH, L"the settings database does not allow one of the values"},
      {SQLITE_TOOBIG, L"the settings database does not allow one of the values"},
      {SQLITE_CONSTRAINT_PRIMARYKEY, L"there is another one with its id"},
      {SQLITE_CONSTRAINT_ROWID, L"there is another one with its id"},
      {SQLITE_CONSTRAINT_UNIQUE, L"there is another one with its id"},
  };
  for (const auto& [code, reason] : reasons) EXPECT_EQ(ReasonText(nullptr, code), reason) << code;
}

TEST(StoreFailures, ReasonsHaveNoWordsOfSqlite) {
  const LogCapture log;
  for (int code = SQLITE_ERROR; code < SQLITE_NOTICE; ++code) {
    for (const int extended : {0, 1, 5, 6, 8}) {
      EXPECT_THAT(ToUtf8(ReasonText(nullptr, code | (extended << 8))),
                  testing::Not(testing::HasSubstr(sqlite3_errstr(code | (extended << 8)))))
          << code;
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
