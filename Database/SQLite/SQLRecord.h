#pragma once

#include <cstdint>
#include <span>

#include "Database/SQLite/ColumnBinding.h"

/// What has happened to a record since it was loaded; whoever stores records acts on it.
enum class ChangeState : uint32_t {
  Unchanged = 0,
  New = 1,
  Changed = 2,
  Removed = 3,
  Renamed = 4,
};

/// Base of every record that is loaded from the settings database: its change state, and the columns of its class.
class SQLRecord {
 public:
  virtual ~SQLRecord() = default;

  ChangeState GetState() const { return state_; }

  /// The first change of a record sticks; only `Removed` overrides it.
  void SetState(ChangeState state);

  /// The columns in the order of every query: one list, which all records of a class have in common.
  virtual std::span<const ColumnBinding> GetBindings() const = 0;

 protected:
  SQLRecord() = default;
  SQLRecord(const SQLRecord&) = default;
  SQLRecord& operator=(const SQLRecord&) = default;

 private:
  ChangeState state_ = ChangeState::Unchanged;
};
