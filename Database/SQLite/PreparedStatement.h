#pragma once

#include <memory>
#include <string>

struct sqlite3_stmt;

/// A compiled statement and the text that it was compiled from; an empty handle for none.
struct PreparedStatement {
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const;
  };
  using Handle = std::unique_ptr<sqlite3_stmt, Finalize>;

  std::wstring text;
  Handle handle;
  bool kept = false;  // it was compiled for an earlier use
};
