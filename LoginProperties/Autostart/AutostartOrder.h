#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "WaylineDll/AutoStartItem.h"

/// The headers and entries of an autostart list in the order in which they are shown. Places in it count from 0.
using AutostartList = std::vector<std::shared_ptr<AutoStartItem>>;

/// Where a record stands in its list: by its phase, and in that by its order.
uint32_t SortKey(const AutoStartItem& record);

/// Whether a record is a program, which can be edited, and no header.
bool IsEntry(const AutoStartItem& record);

/// The records that are shown, in order; among equal ones that of their ids. Removed ones are left out, and so are
/// those of a type that nobody knows, which are logged.
AutostartList InOrder(const AutoStartTable& records);

// What moves changes is marked as changed. After them the list is to be put in order anew.

/// Whether moving an entry up or down can have an effect: not that of the first one of the first phase, or the last one
/// of the last phase.
bool CanMoveUp(const AutostartList& list, size_t place);
bool CanMoveDown(const AutostartList& list, size_t place);

/// Moves an entry before the one above it; the first one of a group to the end of the group above.
void MoveUp(const AutostartList& list, size_t place);

/// Moves an entry behind the one below it; the last one of a group to the beginning of the group below, which is
/// numbered anew.
void MoveDown(const AutostartList& list, size_t place);

/// What is selected when the entry at a place is removed: the next one of its group, so that several can be removed in
/// turn; else what is above it. The entry itself when it is alone.
size_t PlaceAfterRemoval(const AutostartList& list, size_t place);

/// The order of a record that is to be added while the one at `selected` is selected: at the end of the group of that
/// one, or right after it when the record is of another phase. 1 when none is selected.
uint16_t OrderOfNew(const AutostartList& list, std::optional<size_t> selected, const AutoStartItem& added);

/// The order of a record of the list whose phase has been changed: at the end of its new phase.
uint16_t OrderInNewPhase(const AutostartList& list, const AutoStartItem& changed);
