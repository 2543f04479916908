#include "WaylineDll/Store/RowWriter.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <string_view>
#include <utility>

#include "Database/Profiles/ProfileNames.h"
#include "NetUtilities/Text/Format.h"

namespace {

constexpr std::array<std::wstring_view, 1> kProfileKeys = {L"ProfileId"};
constexpr std::array<std::wstring_view, 2> kPreferenceKeys = {L"ProfileId", L"PreferenceId"};
// The number of an entry that was removed may be another's by now.
constexpr std::array<std::wstring_view, 2> kAutoStartKeys = {L"ProfileId", L"Id"};
constexpr std::array<std::wstring_view, 2> kConfigKeys = {L"ProfileId", L"Automatic"};

// Where records are stored, and the columns that tell their rows apart.
struct RowTable {
  std::wstring_view name;
  std::span<const std::wstring_view> keys;
};

RowTable TableOf(RecordKind kind) {
  switch (kind) {
    case RecordKind::Profile:
      return {kProfileTable, kProfileKeys};
    case RecordKind::Preference:
      return {kPreferenceTable, kPreferenceKeys};
    case RecordKind::AutoStartItem:
      return {kAutoStartTable, kAutoStartKeys};
    case RecordKind::ManualConfig:
    case RecordKind::AutoConfig:
      break;
  }
  return {kConfigSettingTable, kConfigKeys};
}

// For the log.
std::wstring NameOf(const RowChange& change) {
  switch (change.kind) {
    case RecordKind::Profile:
      return Format(L"Profile {}", change.profileId);
    case RecordKind::Preference:
      return Format(L"Preference {} of profile {}", change.key, change.profileId);
    case RecordKind::AutoStartItem:
      return Format(L"Autostart entry {} of profile {}", change.key, change.profileId);
    case RecordKind::ManualConfig:
    case RecordKind::AutoConfig:
      break;
  }
  return Format(L"Proxy configuration of profile {}", change.profileId);
}

int32_t RowFound(int32_t code, bool& found) {
  found = code == SQLITE_ROW;
  return found || code == SQLITE_DONE ? SQLITE_OK : code;
}

}  // namespace

int32_t RowWriter::Write(const RowChange& change) {
  if (change.IsRemoval()) {
    const RowTable table = TableOf(change.kind);
    return DeleteRow(Connection(), table.name, ColumnsNamed(*change.record, table.keys));
  }
  if (change.kind == RecordKind::AutoStartItem && !change.loaded) {
    if (const int32_t code = LookForList(change.profileId); code != SQLITE_OK) return code;
    return change.IsPinned() && hadList_[change.profileId] ? SQLITE_OK : Insert(change);
  }
  std::vector<ColumnValue> before;
  if (change.loaded) {
    std::ranges::transform(change.changed, std::back_inserter(before),
                           [&](const ColumnBinding& column) { return column.read(*change.loaded); });
  }
  bool exists = false;
  if (const int32_t code = Find(change, exists); code != SQLITE_OK) return code;
  if (!exists) return Insert(change);
  return change.IsPinned() ? SQLITE_OK : Update(change, before);
}

// Also reads what the row holds into the values that the record was loaded with; NULL leaves them as they are.
int32_t RowWriter::Find(const RowChange& change, bool& exists) {
  const RowTable table = TableOf(change.kind);
  std::wstring condition;
  std::vector<int32_t> values;
  for (const std::wstring_view key : table.keys) {
    condition += Format(L"{}{} = @{}", condition.empty() ? L"" : L" and ", key, key);
    values.push_back(static_cast<int32_t>(std::get<int64_t>(ColumnNamed(*change.record, key).read(*change.record))));
  }
  SQLContext context;
  const std::wstring columns =
      change.loaded ? ColumnNames(change.loaded->GetBindings()) : std::wstring(table.keys.front());
  const int32_t code =
      RowFound(sqlite_.Execute(context, Format(L"select {} from {} where {};", columns, table.name, condition),
                               std::move(values)),
               exists);
  if (exists && change.loaded) sqlite_.ReadData(context, change.loaded.get());
  return code;
}

int32_t RowWriter::Update(const RowChange& change, const std::vector<ColumnValue>& before) {
  for (size_t index = 0; index < before.size(); ++index) {
    const ColumnBinding& column = change.changed[index];
    const ColumnValue stored = column.read(*change.loaded);
    if (stored == before[index] || stored == column.read(*change.record)) continue;
    replaced_.push_back(Format(L"{}: {} was changed by another program too; the user's value replaces it",
                               NameOf(change), column.name));
  }
  const RowTable table = TableOf(change.kind);
  return UpdateRow(Connection(), table.name, {*change.record, change.changed}, {*change.record, change.pinned},
                   ColumnsNamed(*change.record, table.keys));
}

// A row beside the profiles gets a number that is free.
int32_t RowWriter::Insert(const RowChange& change) const {
  RecordColumns columns = {*change.record, change.changed};
  if (change.kind != RecordKind::Profile) {
    const auto bindings = change.record->GetBindings();
    columns.columns.assign(bindings.begin(), bindings.end());
    std::erase_if(columns.columns, [](const ColumnBinding& column) { return column.kind == ColumnKind::Key; });
  }
  return InsertRow(Connection(), TableOf(change.kind).name, columns);
}

int32_t RowWriter::LookForList(uint32_t profileId) {
  if (hadList_.contains(profileId)) return SQLITE_OK;
  SQLContext context;
  return RowFound(sqlite_.Execute(context, Format(L"select Id from {} where ProfileId = @ProfileId;", kAutoStartTable),
                                  {static_cast<int32_t>(profileId)}),
                  hadList_[profileId]);
}
