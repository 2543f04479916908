#pragma once

#include "NetUtilities/Module/Owner.h"

struct sqlite3;
struct sqlite3_stmt;

void CloseConnection(sqlite3* connection);
void FinalizeStatement(sqlite3_stmt* statement);

/// Owns a connection to a database, which outlives its statements.
using ConnectionHandle = Owner<sqlite3*, CloseConnection>;

/// Owns a compiled statement.
using StatementHandle = Owner<sqlite3_stmt*, FinalizeStatement>;
