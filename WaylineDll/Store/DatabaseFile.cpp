#include "WaylineDll/Store/DatabaseFile.h"

#include <sqlite3.h>

#include <filesystem>
#include <random>
#include <string_view>
#include <system_error>

#include "Database/Profiles/ProfileNames.h"
#include "Database/Profiles/ServiceInfo.h"
#include "Database/SQLite/SQLiteHandles.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/Utf8.h"
#include "WaylineDll/Store/EmbeddedSql.h"
#include "WaylineDll/Store/Failures.h"
#include "WaylineDll/Store/RecordRows.h"
#include "WaylineDll/Store/Statement.h"
#include "WaylineDll/Store/Transaction.h"

namespace {

using std::filesystem::path;
using std::filesystem::perms;

// As in the schema.
constexpr int64_t kApplicationId = 0x5741594C;
constexpr int64_t kVersion = 1;

std::wstring TextOf(const std::error_code& error) { return FromUtf8(error.message()); }

// Also set when opening fails, to tell why.
int32_t Open(const std::wstring& file, int flags, ConnectionHandle& connection) {
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(ToUtf8(file).c_str(), &opened, flags | SQLITE_OPEN_EXRESCODE, nullptr);
  connection.reset(opened);
  if (code == SQLITE_OK) sqlite3_busy_timeout(opened, kBusyTimeout);
  return code;
}

int32_t ReadNumber(sqlite3* connection, std::wstring_view sql, int64_t& number) {
  Statement statement;
  int32_t code = statement.Prepare(connection, sql);
  if (code == SQLITE_OK) code = statement.Step();
  if (code != SQLITE_ROW) return code;
  number = statement.Integer(0);
  return SQLITE_OK;
}

Failure CheckSchemaVersion(sqlite3* connection, const std::wstring& file) {
  int64_t applicationId = 0;
  int64_t version = 0;
  int32_t code = ReadNumber(connection, L"PRAGMA application_id", applicationId);
  if (code == SQLITE_OK) code = ReadNumber(connection, L"PRAGMA user_version", version);
  if (code != SQLITE_OK) return UseFailure(file, connection, code);
  if (applicationId != kApplicationId) return UseFailure(file, kForeignFile);
  if (version < kVersion) return UseFailure(file, L"it was made by an older version of Wayline");
  if (version > kVersion) return UseFailure(file, L"it was made by a newer version of Wayline");
  return {};
}

// A statement that needs every column of a record's table, and reads no rows.
std::wstring SelectColumns(std::wstring_view table, const SQLRecord& record) {
  return Format(L"SELECT {} FROM {} LIMIT 0", ColumnNames(record.GetBindings()), table);
}

Failure CheckColumns(sqlite3* connection, const std::wstring& file) {
  const std::wstring selections[] = {
      SelectColumns(kProfileTable, Profile(0)),        SelectColumns(kPreferenceTable, Preference()),
      SelectColumns(kAutoStartTable, AutoStartItem()), SelectColumns(kConfigSettingTable, ConfigSetting()),
      SelectColumns(kServiceTable, ServiceRecord()),   L"SELECT Name, Value FROM ClientState LIMIT 0",
  };
  for (const std::wstring& selection : selections) {
    const int32_t code = RunStatement(connection, selection);
    if (code == SQLITE_ERROR) {
      return UseFailure(file,
                        Format(L"the settings database is incomplete ({})", FromUtf8(sqlite3_errmsg(connection))));
    }
    if (code != SQLITE_OK) return UseFailure(file, connection, code);
  }
  return {};
}

// SQLite opens a write-protected file for reading without a word, and an administrator may be allowed to
// write it.
bool IsWriteProtected(const std::wstring& file) {
  std::error_code ignored;
  const perms permissions = std::filesystem::status(path(file), ignored).permissions();
  return (permissions & (perms::owner_write | perms::group_write | perms::others_write)) == perms::none;
}

Failure CheckWritable(sqlite3* connection, const std::wstring& file) {
  if (IsWriteProtected(file) || sqlite3_db_readonly(connection, "main") != 0) return UseFailure(file, kReadOnlyFile);
  Transaction transaction(connection);
  const int32_t code = transaction.BeginWriting();
  return code == SQLITE_OK ? Failure() : UseFailure(file, connection, code);
}

int32_t FillNewDatabase(sqlite3* connection) {
  Transaction transaction(connection);
  int32_t code = transaction.BeginWriting();
  for (const char* statements : {kSchemaSql, kSampleDataSql}) {
    if (code == SQLITE_OK) code = sqlite3_exec(connection, statements, nullptr, nullptr, nullptr);
  }
  return code == SQLITE_OK ? transaction.Commit() : code;
}

// Removes what an interrupted creation has left.
void RemoveUnfinished(const std::wstring& file) {
  std::error_code ignored;
  for (const wchar_t* suffix : {L"", L"-journal"}) std::filesystem::remove(path(file + suffix), ignored);
}

}  // namespace

Failure CreateDatabaseFile(const std::wstring& file) {
  // A name of its own: another program may be creating the same database.
  const std::wstring unfinished = Format(L"{}.{:08x}.new", file, std::random_device()());
  {
    ConnectionHandle connection;
    int32_t code = Open(unfinished, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, connection);
    if (code == SQLITE_OK) code = FillNewDatabase(connection.get());
    if (code != SQLITE_OK) {
      const std::wstring reason = ReasonText(connection.get(), code);
      connection.reset();
      RemoveUnfinished(unfinished);
      return CreateFailure(file, reason);
    }
  }
  // Who was faster has made the database; it is not replaced.
  std::error_code error;
  if (!std::filesystem::exists(path(file), error)) std::filesystem::rename(path(unfinished), path(file), error);
  RemoveUnfinished(unfinished);
  return error ? CreateFailure(file, TextOf(error)) : Failure();
}

Failure CheckDatabaseFile(const std::wstring& file, SettingsAccess) {
  std::error_code error;
  const bool isFile = std::filesystem::is_regular_file(path(file), error);
  if (error) return UseFailure(file, TextOf(error));
  if (!isFile) return UseFailure(file, kForeignFile);
  ConnectionHandle connection;
  const int32_t code = Open(file, SQLITE_OPEN_READWRITE, connection);
  if (code != SQLITE_OK) return UseFailure(file, connection.get(), code);
  for (const auto check : {CheckSchemaVersion, CheckColumns, CheckProfileChains, CheckWritable}) {
    if (Failure failure = check(connection.get(), file)) return failure;
  }
  return {};
}

Failure CheckProfileChains(sqlite3* connection, const std::wstring& file) {
  // Down from the profiles without parent; a profile that is not reached has no end above it.
  int64_t endless = 0;
  const int32_t code = ReadNumber(connection,
                                  L"WITH RECURSIVE Reached(Id) AS ("
                                  L"SELECT ProfileId FROM Profiles WHERE ifnull(LinkProfile, 0) = 0 "
                                  L"UNION SELECT ProfileId FROM Profiles JOIN Reached ON LinkProfile = Id) "
                                  L"SELECT min(ProfileId) FROM Profiles WHERE ProfileId NOT IN Reached",
                                  endless);
  if (code != SQLITE_OK) return UseFailure(file, connection, code);
  if (endless == 0) return {};
  return UseFailure(file, Format(L"the settings database is damaged (the links of profile {} have no end)", endless));
}
