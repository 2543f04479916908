#include "Database/SQLite/SQLRecord.h"

std::wstring ColumnNames(const std::vector<ColumnBinding>& columns) {
  constexpr size_t kUsualLength = 24;
  std::wstring names;
  names.reserve(columns.size() * kUsualLength);
  for (const ColumnBinding& column : columns) {
    if (!names.empty()) names += L", ";
    names += column.name;
  }
  return names;
}

void SQLRecord::SetState(ChangeState state) {
  if (state_ == ChangeState::Unchanged || state == ChangeState::Removed) state_ = state;
}

void SQLRecord::Bind(std::wstring_view name, ColumnKind kind, void* member, uint32_t marker) {
  bindings_.push_back({std::wstring(name), kind, member, marker});
}
