#include "WaylineDll/Store/RecordLoader.h"

#include <sqlite3.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "Database/Profiles/BuiltInPreferences.h"
#include "Database/Profiles/ProfileNames.h"
#include "NetUtilities/Text/Format.h"
#include "WaylineDll/Store/BuiltInPhases.h"

namespace {

// A profile and those that it is linked to, the nearest first. Links that have no end lead no further than there are
// profiles.
constexpr std::wstring_view kChain =
    L"with recursive Chain(Id, Distance) as ("
    L"select @ProfileId, 0 "
    L"union all select LinkProfile, Distance + 1 from Profiles join Chain on ProfileId = Id "
    L"where LinkProfile <> 0 and Distance < (select count(*) from Profiles)) ";

template <typename Record>
LoadedRecord<Record> Loaded(const Record& values, bool stored) {
  return {std::make_shared<Record>(values), values, stored};
}

bool HasHeader(const LoadedAutoStart& items, uint16_t phase) {
  return std::ranges::any_of(items, [phase](const auto& entry) {
    const AutoStartItem::Fields& fields = entry.second.values.fields;
    return fields.recordType == AutoStartRecordType::PhaseHeader && fields.phase == phase;
  });
}

AutoStartItem HeaderOf(const BuiltInPhase& phase, uint32_t profileId, uint32_t id) {
  AutoStartItem header;
  header.fields.id = static_cast<int32_t>(id);
  header.fields.profileId = static_cast<int32_t>(profileId);
  header.fields.phase = phase.phase;
  header.fields.recordType = AutoStartRecordType::PhaseHeader;
  header.fields.name = phase.title;
  header.fields.modifiable = false;
  header.fields.definitionLocked = true;
  return header;
}

}  // namespace

std::optional<LoadedPreferences> RecordLoader::LoadPreferences(uint32_t profileId, uint32_t firstId) const {
  LoadedPreferences preferences;
  SQLContext context;
  int32_t code = sqlite_.Execute(context,
                                 Format(L"select {} from {} join ({}select Id, Distance from Chain) on ProfileId = Id "
                                        L"order by Distance;",
                                        ColumnNames(Preference().GetBindings()), kPreferenceTable, kChain),
                                 {static_cast<int32_t>(firstId)});
  for (; code == SQLITE_ROW; code = context.Step()) {
    Preference row;
    sqlite_.ReadData(context, &row);
    PreferenceFields fields = row.Fields();
    const bool stored = fields.profileId == profileId;
    fields.profileId = profileId;
    preferences.try_emplace(fields.preferenceId, Loaded(Preference(fields), stored));
  }
  if (code != SQLITE_DONE) {
    sqlite_.ReportError(code);
    return std::nullopt;
  }
  for (const BuiltInPreference& builtIn : BuiltInPreferences()) {
    const PreferenceFields fields = {
        .preferenceId = builtIn.id, .profileId = profileId, .state = builtIn.value, .visible = true};
    preferences.try_emplace(builtIn.id, Loaded(Preference(fields), false));
  }
  return preferences;
}

std::optional<LoadedAutoStart> RecordLoader::LoadAutoStart(uint32_t profileId, uint32_t firstId,
                                                           uint32_t& nextId) const {
  LoadedAutoStart items;
  SQLContext context;
  int32_t code = sqlite_.Execute(
      context,
      Format(L"select {} from {} where ProfileId = ({}select Id from Chain where exists (select 1 from {} where "
             L"ProfileId = Chain.Id) order by Distance limit 1) order by Phase, ItemOrder, Id;",
             ColumnNames(AutoStartItem().GetBindings()), kAutoStartTable, kChain, kAutoStartTable),
      {static_cast<int32_t>(firstId)});
  for (; code == SQLITE_ROW; code = context.Step()) {
    AutoStartItem row;
    sqlite_.ReadData(context, &row);
    const bool stored = row.fields.profileId == static_cast<int32_t>(profileId);
    if (!stored) {
      row.fields.profileId = static_cast<int32_t>(profileId);
      row.fields.id = static_cast<int32_t>(nextId++);
    }
    items.try_emplace(static_cast<uint32_t>(row.fields.id), Loaded(row, stored));
  }
  if (code != SQLITE_DONE) {
    sqlite_.ReportError(code);
    return std::nullopt;
  }
  // They also hold the place of a list whose entries have all been removed: without a row it would be inherited again.
  for (const BuiltInPhase& phase : BuiltInPhases()) {
    if (HasHeader(items, phase.phase)) continue;
    const uint32_t id = nextId++;
    items.emplace(id, Loaded(HeaderOf(phase, profileId, id), false));
  }
  return items;
}

std::optional<std::vector<ServiceRecord>> RecordLoader::LoadServices() const {
  std::vector<ServiceRecord> services;
  SQLContext context;
  int32_t code = sqlite_.Execute(
      context,
      Format(L"select {} from {} order by ServiceId;", ColumnNames(ServiceRecord().GetBindings()), kServiceTable), {});
  for (; code == SQLITE_ROW; code = context.Step()) sqlite_.ReadData(context, &services.emplace_back());
  if (code == SQLITE_DONE) return services;
  sqlite_.ReportError(code);
  return std::nullopt;
}

std::optional<LoadedRecord<ConfigSetting>> RecordLoader::LoadConfig(uint32_t profileId, bool automatic) const {
  ConfigSetting config;
  config.fields.profileId = static_cast<int32_t>(profileId);
  config.fields.automatic = automatic;
  SQLContext context;
  const int32_t code =
      sqlite_.Execute(context,
                      Format(L"select {} from {} where ProfileId = @ProfileId and Automatic = @Automatic;",
                             ColumnNames(config.GetBindings()), kConfigSettingTable),
                      {static_cast<int32_t>(profileId), automatic ? 1 : 0});
  if (code == SQLITE_ROW) sqlite_.ReadData(context, &config);
  if (code == SQLITE_ROW || code == SQLITE_DONE) return Loaded(config, code == SQLITE_ROW);
  sqlite_.ReportError(code);
  return std::nullopt;
}
