#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string_view>
#include <vector>

#include "WaylineDll/SettingsTables.h"
#include "WaylineDll/Store/LoadedRecords.h"

/// What is to become of one row.
struct RowChange {
  RecordKind kind{};
  uint32_t key = 0;  // of the record in its table
  ChangeState state{};
  uint32_t profileId = 0;                // the profile, or the one that the row belongs to
  std::shared_ptr<SQLRecord> record{};   // a copy
  std::shared_ptr<SQLRecord> loaded{};   // a copy of what it was loaded as; null for one that is to be added
  std::vector<ColumnBinding> changed{};  // columns that get the record's value; of a new profile all that it stores
  std::vector<ColumnBinding> pinned{};   // columns that get it where the row has none

  /// Whether the row is only to be there, whatever it holds.
  bool IsPinned() const { return changed.empty() && !IsRemoval(); }

  /// Whether the user made the record, so that its row is to be added.
  bool IsNew() const { return state == ChangeState::New; }
  bool IsRemoval() const { return state == ChangeState::Removed; }
};

/// The column of a record that has this name.
const ColumnBinding& ColumnNamed(const SQLRecord& record, std::wstring_view name);

/// The profiles whose lists of preferences or autostart entries may have to be stored as a whole: their page overrides
/// the defaults and did not when they were loaded.
struct ListsToPin {
  std::set<uint32_t> preferences;
  std::set<uint32_t> autoStartItems;
};
ListsToPin FindListsToPin(const ProfileTable& profiles, const LoadedRecords& loaded);

/// What saving has to write, in the order of writing: what the records of `tables`, and those that were handed out,
/// differ in from the values that they were loaded with. New profiles come before those that are linked to them,
/// removed ones after. Nothing that belongs to a removed profile is written; one that was made and removed again never
/// was.
std::vector<RowChange> PlanSaving(const SettingsTables& tables, const LoadedRecords& loaded);
