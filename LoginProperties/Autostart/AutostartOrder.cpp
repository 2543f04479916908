#include "LoginProperties/Autostart/AutostartOrder.h"

#include <algorithm>
#include <limits>

#include "NetUtilities/Log.h"
#include "NetUtilities/Text/Format.h"

namespace {

constexpr uint16_t kFirstPhase = 300;
constexpr uint16_t kLastPhase = 1600;

uint16_t PhaseOf(const AutoStartItem& record) { return record.fields.phase; }

void Place(AutoStartItem& record, uint16_t phase, uint16_t order) {
  record.fields.phase = phase;
  record.fields.order = order;
  record.SetState(ChangeState::Changed);
}

// Gives the entries of a phase the orders from 1 on.
void Renumber(const AutostartList& list, uint16_t phase) {
  uint16_t order = 0;
  for (const auto& record : list) {
    if (!IsEntry(*record) || PhaseOf(*record) != phase) continue;
    if (record->fields.order != ++order) Place(*record, phase, order);
  }
}

uint16_t OrderAfter(const AutostartList& list, const AutoStartItem& record) {
  if (record.fields.order == std::numeric_limits<uint16_t>::max()) Renumber(list, PhaseOf(record));
  return static_cast<uint16_t>(record.fields.order + 1);
}

bool HasEqualEntries(const AutostartList& list, uint16_t phase) {
  return std::ranges::adjacent_find(list, [phase](const auto& record, const auto& next) {
           return IsEntry(*record) && IsEntry(*next) && PhaseOf(*record) == phase && SortKey(*record) == SortKey(*next);
         }) != list.end();
}

// Swaps two entries of one phase. Among equal ones that would be no move, or one past several.
void SwapOrders(const AutostartList& list, AutoStartItem& one, AutoStartItem& other) {
  const uint16_t phase = PhaseOf(one);
  if (HasEqualEntries(list, phase)) Renumber(list, phase);
  const uint16_t order = one.fields.order;
  Place(one, phase, other.fields.order);
  Place(other, phase, order);
}

bool AreNeighbours(const AutoStartItem& entry, const AutoStartItem& beside) {
  return IsEntry(beside) && PhaseOf(beside) == PhaseOf(entry);
}

}  // namespace

uint32_t SortKey(const AutoStartItem& record) {
  constexpr uint32_t kOrders = 0x10000;
  return PhaseOf(record) * kOrders + record.fields.order;
}

bool IsEntry(const AutoStartItem& record) { return record.fields.recordType == AutoStartRecordType::Program; }

AutostartList InOrder(const AutoStartTable& records) {
  AutostartList list;
  for (const auto& [id, record] : records) {
    if (!record || record->GetState() == ChangeState::Removed) continue;
    if (IsEntry(*record) || record->fields.recordType == AutoStartRecordType::PhaseHeader) {
      list.push_back(record);
    } else {
      Log(LogLevel::Trace,
          Format(L"Unknown autostart record type {}", static_cast<int32_t>(record->fields.recordType)));
    }
  }
  std::ranges::stable_sort(list, {}, [](const auto& record) { return SortKey(*record); });
  return list;
}

bool CanMoveUp(const AutostartList& list, size_t place) {
  const AutoStartItem& entry = *list.at(place);
  if (PhaseOf(entry) != kFirstPhase || entry.fields.order > 1) return true;
  return place > 0 && AreNeighbours(entry, *list[place - 1]);
}

bool CanMoveDown(const AutostartList& list, size_t place) {
  return PhaseOf(*list.at(place)) != kLastPhase || place + 1 < list.size();
}

void MoveUp(const AutostartList& list, size_t place) {
  if (place == 0) return;
  AutoStartItem& entry = *list.at(place);
  size_t above = place - 1;
  if (AreNeighbours(entry, *list[above])) return SwapOrders(list, entry, *list[above]);
  if (!IsEntry(*list[above]) && above > 0) --above;
  AutoStartItem& last = *list[above];
  const uint16_t order = IsEntry(last) ? OrderAfter(list, last) : 1;
  Place(entry, PhaseOf(last), order);
  last.SetState(ChangeState::Changed);
}

void MoveDown(const AutostartList& list, size_t place) {
  size_t below = place + 1;
  if (below >= list.size()) return;
  AutoStartItem& entry = *list.at(place);
  if (AreNeighbours(entry, *list[below])) return SwapOrders(list, entry, *list[below]);
  const bool isHeader = !IsEntry(*list[below]);
  if (isHeader && below + 1 < list.size() && IsEntry(*list[below + 1])) ++below;
  const uint16_t phase = PhaseOf(*list[below]);
  uint16_t order = 1;
  Place(entry, phase, order);
  for (; below < list.size(); ++below) {
    if (AreNeighbours(entry, *list[below])) Place(*list[below], phase, ++order);
  }
}

size_t PlaceAfterRemoval(const AutostartList& list, size_t place) {
  if (place + 1 < list.size() && IsEntry(*list[place + 1])) return place + 1;
  return place > 0 ? place - 1 : place;
}

uint16_t OrderOfNew(const AutostartList& list, std::optional<size_t> selected, const AutoStartItem& added) {
  if (!selected) return 1;
  size_t last = *selected;
  while (last + 1 < list.size() && PhaseOf(*list[last + 1]) == PhaseOf(added)) ++last;
  return OrderAfter(list, *list.at(last));
}

uint16_t OrderInNewPhase(const AutostartList& list, const AutoStartItem& changed) {
  const AutoStartItem* last = nullptr;
  for (const auto& record : list) {
    if (record.get() != &changed && PhaseOf(*record) == PhaseOf(changed)) last = record.get();
  }
  return last != nullptr ? OrderAfter(list, *last) : 1;
}
