#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "Database/Profiles/Profile.h"
#include "tests/ui/sequence/StoredSettings.h"

/// The profiles as the user has made them of those that were loaded.
class ProfilesModel {
 public:
  explicit ProfilesModel(const ProfileTable& loaded);

  const std::map<uint32_t, Profile>& All() const { return now_; }
  ProfileColumns& Columns(uint32_t id) { return now_.at(id).Columns(); }
  const ProfileColumns& Columns(uint32_t id) const { return now_.at(id).Columns(); }

  /// As it was loaded.
  const ProfileColumns& Before(uint32_t id) const { return before_.at(id).Columns(); }

  bool IsRemoved(uint32_t id) const { return removed_.contains(id); }

  /// Names of the profiles that can be selected, by their ids: login profiles with a name that are not hidden.
  std::map<uint32_t, std::wstring> Selectable() const;

  /// What the user is told when a profile cannot be removed.
  std::optional<std::wstring> RefuseRemoval(uint32_t id, const StoredSettings& stored) const;

  void Remove(uint32_t id);

  /// Puts what the user has changed into the row of a profile, and of a page that the profile overrides what the row
  /// has no value for; the rest goes on to be stored or inherited as it is. Whether there was anything to put; nowhere
  /// without a row.
  bool Save(uint32_t id, Row* row) const;

  /// Removes what the user has removed, but for those that others follow by then; their names.
  std::set<std::wstring> SaveRemovals(StoredSettings& stored) const;

 private:
  std::wstring FollowersOf(uint32_t id) const;

  std::map<uint32_t, Profile> now_;
  std::map<uint32_t, Profile> before_;
  std::set<uint32_t> removed_;
};
