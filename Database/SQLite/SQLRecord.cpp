#include "Database/SQLite/SQLRecord.h"

void SQLRecord::SetState(ChangeState state) {
  if (state_ == ChangeState::Unchanged || state == ChangeState::Removed) state_ = state;
}

void SQLRecord::Bind(std::wstring_view name, ColumnKind kind, void* member, uint32_t marker) {
  bindings_.push_back({std::wstring(name), kind, member, marker});
}
