#include "Database/SQLite/SQLRecord.h"

void SQLRecord::SetState(ChangeState state) {
  if (state_ == ChangeState::Unchanged || state == ChangeState::Removed) state_ = state;
}
