#include "LoginProperties/Autostart/StartPhases.h"

#include <algorithm>

std::vector<StartPhase> StartPhases(const AutoStartTable& items) {
  std::vector<StartPhase> phases;
  for (const auto& [id, item] : items) {
    if (!item || item->GetState() == ChangeState::Removed) continue;
    const AutoStartItem::Fields& fields = item->fields;
    if (fields.recordType == AutoStartRecordType::PhaseHeader) phases.push_back({fields.name, fields.phase});
  }
  std::ranges::stable_sort(phases, {}, &StartPhase::phase);
  return phases;
}
