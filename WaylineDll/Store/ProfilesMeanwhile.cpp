#include "WaylineDll/Store/ProfilesMeanwhile.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <set>
#include <utility>

#include "Database/Profiles/ProfileIdManager.h"
#include "NetUtilities/Text/Format.h"
#include "WaylineDll/Store/Failures.h"

namespace {

bool IsNewProfile(const RowChange& change) { return change.kind == RecordKind::Profile && change.IsNew(); }

bool IsProfileRemoval(const RowChange& change) { return change.kind == RecordKind::Profile && change.IsRemoval(); }

// Whether it makes a profile follow another one from now on.
bool IsLinking(const RowChange& change) {
  return change.kind == RecordKind::Profile && !change.IsRemoval() &&
         std::ranges::any_of(change.changed,
                             [](const ColumnBinding& column) { return column.kind == ColumnKind::ParentKey; });
}

uint32_t LinkOf(const RowChange& profile) { return static_cast<const Profile&>(*profile.record).GetLinkProfile(); }

using MovedIds = std::map<uint32_t, uint32_t>;

// Gives a number column of a record the new id, where it holds one that has moved.
void MoveColumn(SQLRecord& record, std::wstring_view name, const MovedIds& moved) {
  const ColumnBinding& column = ColumnNamed(record, name);
  const auto found = moved.find(static_cast<uint32_t>(std::get<int64_t>(column.read(record))));
  if (found != moved.end()) column.write(record, int64_t{found->second});
}

void Move(RowChange& change, const MovedIds& moved) {
  MoveColumn(*change.record, L"ProfileId", moved);
  if (change.kind == RecordKind::Profile) MoveColumn(*change.record, L"LinkProfile", moved);
  const auto found = moved.find(change.profileId);
  if (found == moved.end()) return;
  const bool isKey = change.kind != RecordKind::Preference && change.kind != RecordKind::AutoStartItem;
  if (isKey) change.key = found->second;
  change.profileId = found->second;
}

Failure MoveNewProfiles(std::vector<RowChange>& plan, const StoredProfiles& stored) {
  std::set<uint32_t> used;
  for (const auto& [id, link] : stored.links) used.insert(id);
  for (const RowChange& change : plan) {
    if (IsNewProfile(change)) used.insert(change.profileId);
  }
  ProfileIdManager ids;
  ids.SetUsed(used, stored.lastRemoved);
  MovedIds moved;
  for (const RowChange& change : plan) {
    const bool isTaken = stored.links.contains(change.profileId);
    if (!IsNewProfile(change) || (!isTaken && change.profileId > stored.lastRemoved)) continue;
    const uint32_t id = ids.NextId();
    if (id == 0 && isTaken) return SaveFailure(kNoProfileIdLeft);
    if (id != 0) moved[change.profileId] = id;
  }
  if (moved.empty()) return {};
  for (RowChange& change : plan) Move(change, moved);
  return {};
}

Failure RemovedMeanwhile(const std::wstring& name) {
  return Format(
      L"The login profile \"{}\" was removed by another program meanwhile. What was changed in it could not be "
      L"saved.",
      name);
}

Failure DefaultsRemovedMeanwhile(const std::wstring& name) {
  return Format(
      L"The login profile \"{}\" could not be saved: the defaults that it is to follow were removed by another "
      L"program meanwhile.",
      name);
}

// The profiles that rows can belong to; what belongs to others is left out, with a sentence for each profile.
std::set<uint32_t> FindOwners(const std::vector<RowChange>& plan, const StoredProfiles& stored,
                              const NameOfProfile& nameOf, std::vector<std::wstring>& lost) {
  std::set<uint32_t> owners;
  for (const auto& [id, link] : stored.links) owners.insert(id);
  std::set<uint32_t> missing;
  for (const RowChange& change : plan) {
    const uint32_t id = change.profileId;
    if (IsProfileRemoval(change) || missing.contains(id)) continue;
    Failure failure;
    if (!owners.contains(id) && !IsNewProfile(change)) {
      failure = RemovedMeanwhile(nameOf(id));
    } else if (IsLinking(change) && LinkOf(change) != 0 && !owners.contains(LinkOf(change))) {
      failure = DefaultsRemovedMeanwhile(static_cast<const Profile&>(*change.record).GetName());
    }
    if (!failure) {
      owners.insert(id);
      continue;
    }
    lost.push_back(*failure);
    missing.insert(id);
    owners.erase(id);
  }
  return owners;
}

// Leaves out the removals that would take the connection from the client or the defaults from others. Of those that are
// left each comes before the one that it follows by now, which another program may have changed.
void RefuseRemovals(std::vector<RowChange>& plan, const StoredProfiles& stored, const NameOfProfile& nameOf,
                    std::vector<std::wstring>& lost) {
  std::map<uint32_t, uint32_t> links = stored.links;
  for (const RowChange& change : plan) {
    if (IsLinking(change)) links[change.profileId] = LinkOf(change);
  }
  const auto firstRemoval = std::ranges::stable_partition(plan, std::not_fn(IsProfileRemoval)).begin();
  std::vector<RowChange> removals(std::make_move_iterator(firstRemoval), std::make_move_iterator(plan.end()));
  plan.erase(firstRemoval, plan.end());
  // Another program may have been faster.
  std::erase_if(removals, [&](const RowChange& change) { return !links.contains(change.profileId); });
  std::erase_if(removals, [&](const RowChange& change) {
    if (change.profileId != stored.connected) return false;
    lost.push_back(
        Format(L"The login profile \"{}\" could not be removed: it is connected by now.", nameOf(change.profileId)));
    return true;
  });
  const auto isFollowed = [&](const RowChange& change) {
    return std::ranges::any_of(links, [&](const auto& entry) { return entry.second == change.profileId; });
  };
  for (;;) {
    const auto next = std::ranges::find_if_not(removals, isFollowed);
    if (next == removals.end()) break;
    links.erase(next->profileId);
    plan.push_back(std::move(*next));
    removals.erase(next);
  }
  for (const RowChange& change : removals) {
    lost.push_back(
        Format(L"The login profile \"{}\" could not be removed: other profiles follow it.", nameOf(change.profileId)));
  }
}

}  // namespace

Failure FitToStoredProfiles(std::vector<RowChange>& plan, const StoredProfiles& stored, const NameOfProfile& nameOf,
                            std::vector<std::wstring>& lost) {
  if (Failure failure = MoveNewProfiles(plan, stored)) return failure;
  const std::set<uint32_t> owners = FindOwners(plan, stored, nameOf, lost);
  std::erase_if(
      plan, [&](const RowChange& change) { return !IsProfileRemoval(change) && !owners.contains(change.profileId); });
  RefuseRemovals(plan, stored, nameOf, lost);
  return {};
}
