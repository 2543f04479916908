#include "Database/SQLite/ReadTransaction.h"

#include <sqlite3.h>

#include <utility>

#include "Database/SQLite/SQLiteDatabase.h"

namespace {

bool InTransaction(sqlite3* connection) { return sqlite3_get_autocommit(connection) == 0; }

// Failures have no line: the statements between tell what there is to tell.
bool Run(sqlite3* connection, const char* statement) {
  return sqlite3_exec(connection, statement, nullptr, nullptr, nullptr) == SQLITE_OK;
}

}  // namespace

ReadTransaction::ReadTransaction(std::shared_ptr<SQLiteDatabase> database) {
  sqlite3* const connection = database ? database->GetConnection() : nullptr;
  if (connection == nullptr || InTransaction(connection)) return;
  if (Run(connection, "begin;")) database_ = std::move(database);
}

ReadTransaction::~ReadTransaction() {
  // The database may have been closed, and a grave failure of a statement may have ended the transaction.
  sqlite3* const connection = database_ ? database_->GetConnection() : nullptr;
  if (connection == nullptr || !InTransaction(connection)) return;
  if (!Run(connection, "commit;")) Run(connection, "rollback;");
}
