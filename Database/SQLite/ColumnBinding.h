#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

class SQLRecord;

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

/// What a column of a record holds: texts as they are; numbers, characters and flags as a number.
using ColumnValue = std::variant<int64_t, std::wstring, std::string>;

/// One column of a record class's table, and how its value is reached in a record of that class. Bind makes it from the
/// member that holds the value (MemberBinding.h).
struct ColumnBinding {
  std::wstring_view name;
  ColumnKind kind;
  uint32_t marker;  // 1 on the columns that identify a record to people, else 0

  /// The value of the column in a record of the class.
  ColumnValue (*read)(const SQLRecord& record);

  /// Stores a value as `read` gives it, a number in as many bits as the member has.
  void (*write)(SQLRecord& record, ColumnValue&& value);
};

/// The names of columns, separated by ", ".
std::wstring ColumnNames(std::span<const ColumnBinding> columns);
