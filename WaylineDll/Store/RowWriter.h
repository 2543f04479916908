#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "Database/SQLite/SQLite.h"
#include "WaylineDll/Store/RecordRows.h"
#include "WaylineDll/Store/SavePlan.h"

/// Writes planned changes into the rows as they are by then, one after the other, in a transaction that the caller has
/// begun.
class RowWriter {
 public:
  /// `sqlite` has the database open and outlives this.
  explicit RowWriter(SQLite& sqlite) : sqlite_(sqlite) {}

  /// Writes one change. A row that is no longer there is added again, a new one never takes the place of another's, and
  /// one that is only to be there stays as it is if there is one. The SQLite result code, 0 for success.
  int32_t Write(const RowChange& change);

  /// Lines for the log: the columns that another program had changed too, where the user's value has replaced its
  /// value.
  const std::vector<std::wstring>& Replaced() const { return replaced_; }

 private:
  int32_t Find(const RowChange& change, bool& exists);
  int32_t Update(const RowChange& change, const std::vector<ColumnValue>& before);
  int32_t Insert(const RowChange& change) const;
  int32_t LookForList(uint32_t profileId);
  sqlite3* Connection() const { return sqlite_.GetDatabase()->GetConnection(); }

  SQLite& sqlite_;
  std::map<uint32_t, bool> hadList_;  // whether a profile stored an autostart list before this object wrote to it
  std::vector<std::wstring> replaced_;
};
