#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// How a column's text becomes the member that it is bound to.
enum class ColumnKind : uint32_t {
  Text = 1,        // std::wstring: the whole text
  Character = 2,   // wchar_t: the first UTF-16 unit of the text
  Integer32 = 3,   // int32_t: 64-bit decimal, truncated
  Integer64 = 4,   // int64_t
  Boolean = 5,     // bool: 32-bit decimal, true when not 0
  NarrowText = 6,  // std::string: the UTF-8 bytes
  Key = 7,         // int32_t: the record's key
  ParentKey = 8,   // int32_t: the key of the record that this one inherits from, 0 for none
  Integer16 = 9,   // uint16_t: 64-bit decimal, truncated
};

/// What has happened to a record since it was loaded; whoever stores records acts on it.
enum class ChangeState : uint32_t {
  Unchanged = 0,
  New = 1,
  Changed = 2,
  Removed = 3,
  Renamed = 4,
};

/// One column of a record's table and the member that receives its value.
struct ColumnBinding {
  std::wstring name;
  ColumnKind kind;
  void* member;     // of the type that `kind` names, inside the record
  uint32_t marker;  // 1 on the columns that identify a record to people, else 0
};

/// The names of columns, separated by ", ".
std::wstring ColumnNames(const std::vector<ColumnBinding>& columns);

/// Base of every record that is loaded from the settings database: its change state and its columns, in the order of
/// every query.
class SQLRecord {
 public:
  virtual ~SQLRecord() = default;

  ChangeState GetState() const { return state_; }

  /// The first change of a record sticks; only `Removed` overrides it.
  void SetState(ChangeState state);

  const std::vector<ColumnBinding>& GetBindings() const { return bindings_; }

 protected:
  SQLRecord() = default;

  /// Copies the change state. The bindings of a copy lead into the copy: the derived class binds its columns anew.
  SQLRecord(const SQLRecord& other) : state_(other.state_) {}
  SQLRecord& operator=(const SQLRecord& other) {
    state_ = other.state_;
    return *this;
  }

  /// Appends a column; `member` must be a member of this record and of the type that `kind` names.
  void Bind(std::wstring_view name, ColumnKind kind, void* member, uint32_t marker = 0);

 private:
  ChangeState state_ = ChangeState::Unchanged;
  std::vector<ColumnBinding> bindings_;
};
