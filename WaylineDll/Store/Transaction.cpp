#include "WaylineDll/Store/Transaction.h"

#include <sqlite3.h>

#include "WaylineDll/Store/Statement.h"

Transaction::~Transaction() {
  // Some failures have already rolled the transaction back; then there is none.
  if (sqlite3_get_autocommit(connection_) == 0) RunStatement(connection_, L"ROLLBACK");
}

int32_t Transaction::BeginReading() { return RunStatement(connection_, L"BEGIN"); }

int32_t Transaction::BeginWriting() { return RunStatement(connection_, L"BEGIN IMMEDIATE"); }

int32_t Transaction::Commit() { return RunStatement(connection_, L"COMMIT"); }
