#include "WaylineDll/Store/DatabaseFile.h"

#include <sqlite3.h>

#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

#include "Database/Profiles/ProfileNames.h"
#include "Database/Profiles/ServiceInfo.h"
#include "NetUtilities/Text/Format.h"
#include "WaylineDll/Store/Failures.h"
#include "WaylineDll/Store/OpenConnection.h"
#include "WaylineDll/Store/RecordRows.h"
#include "WaylineDll/Store/SchemaUpgrade.h"
#include "WaylineDll/Store/Statement.h"
#include "WaylineDll/Store/Transaction.h"

namespace {

using std::filesystem::path;
using std::filesystem::perms;

// As in the schema.
constexpr int64_t kApplicationId = 0x5741594C;

Failure ReadVersion(sqlite3* connection, const std::wstring& file, int64_t& version) {
  int64_t applicationId = 0;
  int32_t code = ReadNumber(connection, L"PRAGMA application_id", applicationId);
  if (code == SQLITE_OK) code = ReadNumber(connection, L"PRAGMA user_version", version);
  if (code != SQLITE_OK) return UseFailure(file, connection, code);
  if (applicationId != kApplicationId) return UseFailure(file, kForeignFile);
  if (version < kOldestVersion) return UseFailure(file, L"it was made by an older version of Wayline");
  if (version > kCurrentVersion) return UseFailure(file, L"it was made by a newer version of Wayline");
  return {};
}

struct TableColumns {
  std::wstring_view table;
  std::wstring names;
  int64_t since = kOldestVersion;  // the version that brought the table
};

Failure CheckColumns(sqlite3* connection, const std::wstring& file, int64_t version) {
  const std::vector<TableColumns> tables = {
      {kProfileTable, ColumnNames(Profile(0).GetBindings())},
      {kPreferenceTable, ColumnNames(Preference().GetBindings())},
      {kAutoStartTable, ColumnNames(AutoStartItem().GetBindings())},
      {kConfigSettingTable, ColumnNames(ConfigSetting().GetBindings())},
      {kServiceTable, ColumnNames(ServiceRecord().GetBindings())},
      {L"ClientState", L"Name, Value"},
      {L"Bookmarks", L"BookmarkId, Value", 2},
  };
  for (const TableColumns& columns : tables) {
    if (version < columns.since) continue;
    // Needs every column, and reads no rows.
    const int32_t code = RunStatement(connection, Format(L"SELECT {} FROM {} LIMIT 0", columns.names, columns.table));
    if (code == SQLITE_OK) continue;
    const std::wstring reason = ReasonText(connection, code);
    return UseFailure(file, code == SQLITE_ERROR ? Format(L"{} (table {})", reason, columns.table) : reason);
  }
  return {};
}

Failure CheckContents(sqlite3* connection, const std::wstring& file, int64_t version) {
  if (Failure failure = CheckColumns(connection, file, version)) return failure;
  return CheckProfileChains(connection, file);
}

// SQLite opens a write-protected file for reading without a word, and an administrator may be allowed to
// write it.
bool IsWriteProtected(const std::wstring& file) {
  std::error_code ignored;
  const perms permissions = std::filesystem::status(path(file), ignored).permissions();
  return (permissions & (perms::owner_write | perms::group_write | perms::others_write)) == perms::none;
}

// Does what comes before the first byte of the file is written, and is then undone: there must be a journal beside it.
Failure CheckJournal(sqlite3* connection, const std::wstring& file) {
  const int32_t code = RunStatement(connection, Format(L"PRAGMA user_version = {}", kCurrentVersion));
  if (code == SQLITE_OK) return {};
  const std::wstring reason = ReasonText(connection, code);
  return UseFailure(file, code == SQLITE_CANTOPEN ? kReadOnlyFolder : reason);
}

Failure CheckForEditing(sqlite3* connection, const std::wstring& file) {
  // Also before anything is locked: nothing happens to the file of another program, or beside it.
  int64_t version = 0;
  if (Failure failure = ReadVersion(connection, file, version)) return failure;
  if (IsWriteProtected(file) || sqlite3_db_readonly(connection, "main") != 0) return UseFailure(file, kReadOnlyFile);
  Transaction transaction(connection);
  int32_t code = transaction.BeginWriting();
  if (code != SQLITE_OK) return UseFailure(file, connection, code);
  // Another program may have upgraded it meanwhile.
  if (Failure failure = ReadVersion(connection, file, version)) return failure;
  if (Failure failure = CheckContents(connection, file, version)) return failure;
  if (version == kCurrentVersion) return CheckJournal(connection, file);
  if (Failure failure = UpgradeSchema(connection, file, version)) return failure;
  if (Failure failure = CheckContents(connection, file, kCurrentVersion)) return failure;
  code = transaction.Commit();
  return code == SQLITE_OK ? Failure() : UseFailure(file, connection, code);
}

Failure CheckForReading(sqlite3* connection, const std::wstring& file) {
  Transaction transaction(connection);
  const int32_t code = transaction.BeginReading();
  if (code != SQLITE_OK) return UseFailure(file, connection, code);
  int64_t version = 0;
  if (Failure failure = ReadVersion(connection, file, version)) return failure;
  return CheckContents(connection, file, version);
}

}  // namespace

Failure CheckDatabaseFile(const std::wstring& file, SettingsAccess access) {
  std::error_code error;
  const bool isFile = std::filesystem::is_regular_file(path(file), error);
  if (error) return UseFailure(file, ReasonText(error));
  if (!isFile) return UseFailure(file, kForeignFile);
  // For reading too: what a program has left that was killed while it saved is undone. Where only reading is allowed,
  // SQLite does with that.
  ConnectionHandle connection;
  const int32_t code = OpenConnection(file, SQLITE_OPEN_READWRITE, connection);
  if (code != SQLITE_OK) return UseFailure(file, connection.get(), code);
  return access == SettingsAccess::Edit ? CheckForEditing(connection.get(), file)
                                        : CheckForReading(connection.get(), file);
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
