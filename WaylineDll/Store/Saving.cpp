#include "WaylineDll/Store/Saving.h"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

#include "NetUtilities/Log.h"
#include "NetUtilities/Text/Format.h"
#include "WaylineDll/Store/Failures.h"
#include "WaylineDll/Store/RowWriter.h"
#include "WaylineDll/Store/Statement.h"
#include "WaylineDll/Store/StoredValues.h"
#include "WaylineDll/Store/Transaction.h"

namespace {

std::wstring NameOf(const RowChange& change, const NameOfProfile& nameOf) {
  std::wstring profile = Format(L"the login profile \"{}\"", nameOf(change.profileId));
  switch (change.kind) {
    case RecordKind::Profile:
      return profile;
    case RecordKind::Preference:
      return L"the preferences of " + profile;
    case RecordKind::AutoStartItem:
      return L"the autostart entries of " + profile;
    case RecordKind::ManualConfig:
    case RecordKind::AutoConfig:
      break;
  }
  return L"the proxy configuration of " + profile;
}

// A new profile may have moved to an id that nobody knows it by.
NameOfProfile WithNewProfiles(const std::vector<RowChange>& plan, const NameOfProfile& nameOf) {
  return [&](uint32_t id) {
    const auto found = std::ranges::find_if(
        plan, [id](const RowChange& change) { return change.kind == RecordKind::Profile && change.profileId == id; });
    return found != plan.end() ? static_cast<const Profile&>(*found->record).GetName() : nameOf(id);
  };
}

int32_t ReadProfiles(sqlite3* connection, StoredProfiles& profiles) {
  int32_t code = ReadLastRemovedProfile(connection, profiles.lastRemoved);
  if (code == SQLITE_OK) code = ReadConnectedProfile(connection, profiles.connected);
  Statement statement;
  if (code == SQLITE_OK) code = statement.Prepare(connection, L"SELECT ProfileId, LinkProfile FROM Profiles");
  while (code == SQLITE_OK && (code = statement.Step()) == SQLITE_ROW) {
    profiles.links[static_cast<uint32_t>(statement.Integer(0))] = static_cast<uint32_t>(statement.Integer(1));
    code = SQLITE_OK;
  }
  return code == SQLITE_DONE ? SQLITE_OK : code;
}

}  // namespace

Failure WritePlan(SQLite& sqlite, std::vector<RowChange> plan, const NameOfProfile& nameOf, SaveReport& report) {
  sqlite3* const connection = sqlite.GetDatabase()->GetConnection();
  SaveReport written;
  Transaction transaction(connection);
  int32_t code = transaction.BeginWriting();
  StoredProfiles stored;
  if (code == SQLITE_OK) code = ReadProfiles(connection, stored);
  if (code != SQLITE_OK) return SaveFailure(ReasonText(connection, code));
  if (Failure failure = FitToStoredProfiles(plan, stored, nameOf, written.lost)) return failure;

  RowWriter writer(sqlite);
  for (const RowChange& change : plan) {
    code = writer.Write(change);
    if (code != SQLITE_OK)
      return RowFailure(NameOf(change, WithNewProfiles(plan, nameOf)), ReasonText(connection, code));
    if (change.state != ChangeState::Unchanged) written.changes.push_back({change.kind, change.key, change.state});
  }
  code = transaction.Commit();
  if (code != SQLITE_OK) return SaveFailure(ReasonText(connection, code));

  for (const std::wstring& line : writer.Replaced()) Log(LogSource::Database, LogLevel::Info, line);
  report = std::move(written);
  return {};
}
