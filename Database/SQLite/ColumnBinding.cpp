#include "Database/SQLite/ColumnBinding.h"

std::wstring ColumnNames(std::span<const ColumnBinding> columns) {
  constexpr size_t kUsualLength = 24;
  std::wstring names;
  names.reserve(columns.size() * kUsualLength);
  for (const ColumnBinding& column : columns) {
    if (!names.empty()) names += L", ";
    names += column.name;
  }
  return names;
}
