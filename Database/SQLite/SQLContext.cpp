#include "Database/SQLite/SQLContext.h"

#include <sqlite3.h>

#include <utility>

#include "Database/SQLite/SQLiteDatabase.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/Utf16.h"

int32_t SQLContext::Prepare(const std::shared_ptr<SQLiteDatabase>& database, std::wstring_view statement) {
  Finalize();
  if (!database) return SQLITE_MISUSE;
  database_ = database;
  return database_->TakeStatement(statement, statement_);
}

int32_t SQLContext::Step() { return sqlite3_step(Get()); }

void SQLContext::Finalize() {
  PreparedStatement statement = std::exchange(statement_, {});
  if (!statement.handle) return;
  if (sqlite3_reset(statement.handle.get()) == SQLITE_OK) {
    database_->KeepStatement(std::move(statement));
    return;
  }
  // When the tables have changed since a kept statement was compiled, a new one would have left nothing to clean up.
  if (PreparedStatement anew; statement.kept && database_->TakeStatement(statement.text, anew) != SQLITE_OK) return;
  // Without a connection the library can only name its generic error. Readers of the logs know the line that way.
  Log(LogLevel::Info, Format(L"Can't cleanup context: {}", FromUtf16(sqlite3_errmsg16(nullptr))));
}
