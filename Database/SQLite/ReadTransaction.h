#pragma once

#include <memory>

class SQLiteDatabase;

/// While it lives, all statements of a database read one and the same state, and lock its file only once. Joins a
/// transaction that is under way. Where it cannot begin, each statement reads for itself as if this did not exist. Used
/// by one thread.
class ReadTransaction {
 public:
  /// A null database, or one that is closed, has no transactions.
  explicit ReadTransaction(std::shared_ptr<SQLiteDatabase> database);
  ~ReadTransaction();
  ReadTransaction(const ReadTransaction&) = delete;
  ReadTransaction& operator=(const ReadTransaction&) = delete;

 private:
  std::shared_ptr<SQLiteDatabase> database_;  // null without a transaction of our own
};
