#include "WaylineDll/Store/DatabaseCreation.h"

#include <sqlite3.h>

#include <filesystem>
#include <system_error>

#include "WaylineDll/Store/EmbeddedSql.h"
#include "WaylineDll/Store/Failures.h"
#include "WaylineDll/Store/OpenConnection.h"
#include "WaylineDll/Store/Transaction.h"
#include "WaylineDll/Store/UnfinishedFile.h"

namespace {

int32_t Fill(sqlite3* connection) {
  Transaction transaction(connection);
  int32_t code = transaction.BeginWriting();
  for (const char* statements : {kSchemaSql, kSampleDataSql}) {
    if (code == SQLITE_OK) code = sqlite3_exec(connection, statements, nullptr, nullptr, nullptr);
  }
  return code == SQLITE_OK ? transaction.Commit() : code;
}

// What a database that has gone had not finished would be done to the new one. The journal is looked for first: that of
// a database which another program has just made is never there without it.
void RemoveOrphanedJournal(const std::wstring& file) {
  const std::filesystem::path journal = file + L"-journal";
  std::error_code error;
  if (!std::filesystem::exists(journal, error) || error) return;
  if (!std::filesystem::exists(std::filesystem::path(file), error) && !error) std::filesystem::remove(journal, error);
}

}  // namespace

Failure CreateDatabaseFile(const std::wstring& file) {
  RemoveOrphanedJournal(file);
  const UnfinishedFile unfinished(file);
  {
    ConnectionHandle connection;
    int32_t code = OpenConnection(unfinished.Name(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, connection);
    if (code == SQLITE_OK) code = Fill(connection.get());
    if (code != SQLITE_OK) return CreateFailure(file, ReasonText(connection.get(), code));
  }
  const std::error_code error = unfinished.AppearIfMissing();
  return error ? CreateFailure(file, ReasonText(error)) : Failure();
}
