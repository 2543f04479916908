#include "Database/SQLite/ReadTransaction.h"

#include <sqlite3.h>

#include <utility>

#include "Database/SQLite/SQLContext.h"
#include "Database/SQLite/SQLiteDatabase.h"

namespace {

bool InTransaction(const SQLiteDatabase& database) { return sqlite3_get_autocommit(database.GetConnection()) == 0; }

void Run(const std::shared_ptr<SQLiteDatabase>& database, std::wstring_view statement) {
  SQLContext context;
  if (context.Prepare(database, statement) == SQLITE_OK) context.Step();
}

}  // namespace

ReadTransaction::ReadTransaction(std::shared_ptr<SQLiteDatabase> database) {
  if (!database || database->GetConnection() == nullptr || InTransaction(*database)) return;
  database_ = std::move(database);
  Run(database_, L"begin;");
}

ReadTransaction::~ReadTransaction() {
  // A grave failure of a statement may have ended the transaction.
  if (database_ && database_->GetConnection() != nullptr && InTransaction(*database_)) Run(database_, L"commit;");
}
