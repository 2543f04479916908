#include "Database/SQLite/PreparedStatement.h"

#include <sqlite3.h>

void PreparedStatement::Finalize::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
