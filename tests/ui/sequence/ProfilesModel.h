#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Database/Profiles/Profile.h"
#include "tests/ui/sequence/StoredSettings.h"

/// The profiles as the user has made them of those that were loaded.
class ProfilesModel {
 public:
  ProfilesModel(const ProfileTable& loaded, const StoredSettings& stored);

  const std::map<uint32_t, Profile>& All() const { return now_; }
  ProfileColumns& Columns(uint32_t id) { return now_.at(id).Columns(); }
  const ProfileColumns& Columns(uint32_t id) const { return now_.at(id).Columns(); }

  /// As it was loaded; of a new one as its defaults were.
  const ProfileColumns& Before(uint32_t id) const { return before_.at(id).Columns(); }

  bool IsNew(uint32_t id) const { return new_.contains(id); }
  bool IsRemoved(uint32_t id) const { return removed_.contains(id); }

  /// The profile from which on links can be followed in the database.
  uint32_t FirstOfChain(uint32_t id) const { return IsNew(id) ? Columns(id).linkProfile : id; }

  /// Names of the profiles that can be selected, by their ids: login profiles with a name that are not hidden.
  std::map<uint32_t, std::wstring> Selectable() const;

  /// What the user is told when a profile cannot be removed.
  std::optional<std::wstring> RefuseRemoval(uint32_t id, const StoredSettings& stored) const;

  void Remove(uint32_t id);

  /// What the user is told when a new profile cannot have a name.
  std::optional<std::wstring> RefuseName(const std::wstring& name) const;

  /// What a new profile can follow, and copy from.
  std::vector<uint32_t> Defaults() const;
  std::vector<uint32_t> Sources() const;

  /// An id for a new profile, the same again until one is added under it; and the defaults that it follows at first:
  /// those of the active profile, else the first.
  uint32_t NextId() {
    while (now_.contains(lastId_ + 1)) ++lastId_;
    return lastId_ + 1;
  }
  uint32_t FirstDefaults(const StoredSettings& stored) const;

  void Add(const ProfileColumns& profile);

  /// The ids under which the new profiles are stored. One that another profile has by now, or had, is not taken.
  std::map<uint32_t, uint32_t> StoredIds(const StoredSettings& stored) const;

  /// The row of a new profile: its id, its name, its link and what differs from its defaults.
  Row NewRow(uint32_t id, uint32_t storedId) const;

  /// Puts what the user has changed into the row of a profile, and of a page that the profile overrides what the row
  /// has no value for; the rest goes on to be stored or inherited as it is. Whether there was anything to put; nowhere
  /// without a row.
  bool Save(uint32_t id, Row* row) const;

  /// Removes what the user has removed, but for the one that is connected by then and those that others follow; the
  /// names of these.
  std::set<std::wstring> SaveRemovals(StoredSettings& stored) const;

 private:
  std::wstring FollowersOf(uint32_t id) const;

  std::map<uint32_t, Profile> now_;
  std::map<uint32_t, Profile> before_;
  std::set<uint32_t> new_;
  std::set<uint32_t> removed_;
  uint32_t lastId_;
};
