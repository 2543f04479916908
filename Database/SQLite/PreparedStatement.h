#pragma once

#include <string>

#include "Database/SQLite/SQLiteHandles.h"

/// A compiled statement and the text that it was compiled from; an empty handle for none.
struct PreparedStatement {
  std::wstring text;
  StatementHandle handle;
  bool kept = false;  // it was compiled for an earlier use
};
