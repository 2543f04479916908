#include "Database/SQLite/SQLContext.h"

#include <sqlite3.h>

#include "Database/SQLite/Utf16.h"
#include "NetUtilities/Format.h"
#include "NetUtilities/Logger/Log.h"

int32_t SQLContext::Prepare(sqlite3* connection, std::wstring_view statement) {
  Finalize();
  return sqlite3_prepare16_v2(connection, ToUtf16(statement).c_str(), -1, &statement_, nullptr);
}

int32_t SQLContext::Step() { return sqlite3_step(statement_); }

void SQLContext::Finalize() {
  if (sqlite3_finalize(statement_) != SQLITE_OK) {
    // Without a connection the library can only name its generic error. Readers of the logs know the line
    // that way.
    Log(LogLevel::Info, Format(L"Can't cleanup context: {}", FromUtf16(sqlite3_errmsg16(nullptr))));
  }
  statement_ = nullptr;
}
