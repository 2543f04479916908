#include "Database/SQLite/SQLiteDatabase.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <mutex>
#include <utility>

#include "Database/SQLite/DatabasePlatform.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/Utf16.h"
#include "NetUtilities/Text/Utf8.h"

namespace {

bool Tracing() { return databasePlatform.isTraceFlagSet(kDatabaseTraceFlag); }

const std::wstring& InstanceMutexName() {
  static const std::wstring name = Format(L"Global\\{}", L"TARN_Database");
  return name;
}

// SQLite's own log: what its functions complain about.
void OnSqliteError(void* /*database*/, int code, const char* message) {
  if (!Tracing()) return;
  Log(LogSource::Database, LogLevel::Error, Format(L"({}) {}", code, FromUtf8(message == nullptr ? "" : message)));
}

// Every statement that SQLite runs; without a text when a connection is closed.
void OnSqliteStatement(void* /*database*/, sqlite3* /*connection*/, const char* statement, int /*event*/) {
  if (statement == nullptr || !Tracing()) return;
  Log(LogSource::Database, LogLevel::Detail, FromUtf8(statement) + databasePlatform.errorSuffix(0));
}

}  // namespace

int32_t SQLiteDatabase::Open(bool configureLogging, const std::wstring& path) {
  if (connection_ != nullptr) return SQLITE_OK;
  result_ = SQLITE_OK;
  path_ = path;
  if (!std::filesystem::exists(std::filesystem::path(path_))) {
    Log(LogLevel::Info, Format(L"database not found: {}", path_));
    result_ = SQLITE_CANTOPEN;
    return result_;
  }

  InstanceMutex instance = databasePlatform.createInstanceMutex(InstanceMutexName());
  instanceMutex_ = std::move(instance.handle);
  if (configureLogging && instance.first) ConfigureLogging();
  if (Tracing()) {
    Log(LogSource::Database, LogLevel::Detail,
        Format(L"[{:#07x}] Opening database {} - process {}", databasePlatform.processId(), path_,
               databasePlatform.executablePath()));
  }

  constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_FULLMUTEX | SQLITE_OPEN_EXRESCODE;
  result_ = sqlite3_open_v2(ToUtf8(path_).c_str(), &connection_, kFlags, nullptr);
  if (result_ != SQLITE_OK) {
    // When memory is short there is no connection to ask.
    const std::wstring reason = connection_ != nullptr ? FromUtf16(sqlite3_errmsg16(connection_)) : std::wstring();
    Log(LogLevel::Error, Format(L"Can't open database {}: {} - {}", path_, result_, reason));
    Close();
    instanceMutex_.reset();
  }
  return result_;
}

int32_t SQLiteDatabase::Close() {
  if (connection_ == nullptr) return SQLITE_OK;
  if (Tracing()) {
    Log(LogSource::Database, LogLevel::Detail,
        Format(L"Closing database {} - process {}", path_, databasePlatform.executablePath()));
  }
  sqlite3* closing = nullptr;
  {
    const std::scoped_lock lock(keptMutex_);
    closing = std::exchange(connection_, nullptr);
    kept_.clear();
  }
  const int32_t result = sqlite3_close(closing);
  if (result != SQLITE_OK) {
    databasePlatform.debuggerOutput(
        Format(L"SQLite Can't close database: {} - {}", result, FromUtf16(sqlite3_errmsg16(closing))));
  }
  instanceMutex_.reset();
  return result;
}

int32_t SQLiteDatabase::TakeStatement(std::wstring_view text, PreparedStatement& statement) {
  {
    const std::scoped_lock lock(keptMutex_);
    if (const auto found = std::ranges::find(kept_, text, &PreparedStatement::text); found != kept_.end()) {
      statement = std::move(*found);
      statement.kept = true;
      kept_.erase(found);
      return SQLITE_OK;
    }
  }
  sqlite3_stmt* prepared = nullptr;
  const int32_t result = sqlite3_prepare16_v2(connection_, ToUtf16(text).c_str(), -1, &prepared, nullptr);
  statement = {std::wstring(text), StatementHandle(prepared)};
  return result;
}

void SQLiteDatabase::KeepStatement(PreparedStatement statement) {
  constexpr size_t kMostKept = 16;
  sqlite3_clear_bindings(statement.handle.get());
  const std::scoped_lock lock(keptMutex_);
  if (connection_ == nullptr || sqlite3_db_handle(statement.handle.get()) != connection_) return;
  if (kept_.size() == kMostKept) kept_.erase(kept_.begin());
  kept_.push_back(std::move(statement));
}

// The calls may fail when something in the process has used the library before, which does no harm.
void SQLiteDatabase::ConfigureLogging() {
  if (const int result = sqlite3_config(SQLITE_CONFIG_LOG, OnSqliteError, static_cast<void*>(this));
      result != SQLITE_OK && Tracing()) {
    Log(LogSource::Database, LogLevel::Error,
        Format(L"[{:#07x}] Can't config database: SQLite_CONFIG_LOG {} - process {}", databasePlatform.processId(),
               result, databasePlatform.executablePath()));
  }
  if (const int result = sqlite3_config(SQLITE_CONFIG_SQLLOG, OnSqliteStatement, static_cast<void*>(this));
      result != SQLITE_OK && Tracing()) {
    Log(LogSource::Database, LogLevel::Error,
        Format(L"[{:#07x}] Can't config database: SQLITE_CONFIG_SQLLOG {} - process {}", databasePlatform.processId(),
               result, databasePlatform.executablePath()));
  }
}
