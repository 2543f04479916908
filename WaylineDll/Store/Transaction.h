#pragma once

#include <cstdint>

struct sqlite3;

/// A transaction of a connection. What has not been committed is rolled back with the object. Results are
/// SQLite result codes.
class Transaction {
 public:
  explicit Transaction(sqlite3* connection) : connection_(connection) {}
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// Begins to read: what is read from now on belongs together.
  int32_t BeginReading();

  /// Begins to write; 5 (SQLITE_BUSY) while another connection writes.
  int32_t BeginWriting();

  int32_t Commit();

 private:
  sqlite3* connection_;
};
