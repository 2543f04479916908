#include "Database/SQLite/SQLiteHandles.h"

#include <sqlite3.h>

void CloseConnection(sqlite3* connection) { sqlite3_close(connection); }

void FinalizeStatement(sqlite3_stmt* statement) { sqlite3_finalize(statement); }
