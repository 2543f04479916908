#include "WaylineDll/Store/ProfilesMeanwhile.h"

#include <algorithm>
#include <array>
#include <set>

#include "Database/Profiles/ProfileIdManager.h"
#include "NetUtilities/Text/Format.h"
#include "WaylineDll/Store/Failures.h"

namespace {

bool IsNewProfile(const RowChange& change) { return change.kind == RecordKind::Profile && change.IsNew(); }

bool IsProfileRemoval(const RowChange& change) { return change.kind == RecordKind::Profile && change.IsRemoval(); }

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

Failure MoveNewProfiles(std::vector<RowChange>& plan, const StoredLinks& stored) {
  std::set<uint32_t> used;
  for (const auto& [id, link] : stored) used.insert(id);
  for (const RowChange& change : plan) {
    if (IsNewProfile(change)) used.insert(change.profileId);
  }
  ProfileIdManager ids;
  ids.SetUsed(used);
  MovedIds moved;
  for (const RowChange& change : plan) {
    if (!IsNewProfile(change) || !stored.contains(change.profileId)) continue;
    const uint32_t id = ids.NextId();
    if (id == 0) return SaveFailure(kNoProfileIdLeft);
    moved[change.profileId] = id;
  }
  if (moved.empty()) return {};
  for (RowChange& change : plan) Move(change, moved);
  return {};
}

// The profiles that there will be for rows to belong to; the others are left out, with a sentence for each.
std::set<uint32_t> FindOwners(const std::vector<RowChange>& plan, const StoredLinks& stored,
                              const NameOfProfile& nameOf, std::vector<std::wstring>& lost) {
  std::set<uint32_t> owners;
  std::set<uint32_t> missing;
  for (const auto& [id, link] : stored) owners.insert(id);
  for (const RowChange& change : plan) {
    const uint32_t id = change.profileId;
    if (IsProfileRemoval(change) || owners.contains(id) || missing.contains(id)) continue;
    if (!IsNewProfile(change)) {
      missing.insert(id);
      lost.push_back(
          Format(L"The login profile \"{}\" was removed by another program meanwhile. What was changed in it "
                 L"could not be saved.",
                 nameOf(id)));
    } else if (LinkOf(change) == 0 || owners.contains(LinkOf(change))) {
      owners.insert(id);
    } else {
      missing.insert(id);
      lost.push_back(
          Format(L"The new login profile \"{}\" could not be saved: the defaults that it follows were "
                 L"removed by another program meanwhile.",
                 static_cast<const Profile&>(*change.record).GetName()));
    }
  }
  return owners;
}

// Leaves out the removals that would take the defaults from others.
void RefuseRemovals(std::vector<RowChange>& plan, StoredLinks links, const NameOfProfile& nameOf,
                    std::vector<std::wstring>& lost) {
  for (const RowChange& change : plan) {
    if (IsNewProfile(change)) links[change.profileId] = LinkOf(change);
  }
  std::erase_if(plan, [&](const RowChange& change) {
    if (!IsProfileRemoval(change)) return false;
    const uint32_t id = change.profileId;
    if (!links.contains(id)) return true;  // another program was faster
    if (std::ranges::any_of(links, [id](const auto& entry) { return entry.second == id; })) {
      lost.push_back(Format(L"The login profile \"{}\" could not be removed: other profiles follow it.", nameOf(id)));
      return true;
    }
    links.erase(id);
    return false;
  });
}

}  // namespace

Failure FitToStoredProfiles(std::vector<RowChange>& plan, const StoredLinks& stored, const NameOfProfile& nameOf,
                            std::vector<std::wstring>& lost) {
  if (Failure failure = MoveNewProfiles(plan, stored)) return failure;
  const std::set<uint32_t> owners = FindOwners(plan, stored, nameOf, lost);
  std::erase_if(
      plan, [&](const RowChange& change) { return !IsProfileRemoval(change) && !owners.contains(change.profileId); });
  RefuseRemovals(plan, stored, nameOf, lost);
  return {};
}
