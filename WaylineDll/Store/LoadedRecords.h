#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <utility>

#include "WaylineDll/SettingsTables.h"

/// A record that was handed out, beside the values that it had when it was loaded.
template <typename Record>
struct LoadedRecord {
  std::shared_ptr<Record> record;
  Record values;
  bool stored = false;  // the profile stores it itself: it is not inherited, copied from its defaults or built in
  bool copied = false;  // made as a copy of another profile's own: it is stored whatever the profile inherits

  /// Whether it is the profile's own, or will be when it is saved.
  bool IsOwn() const { return stored || record->GetState() != ChangeState::Unchanged; }
};

using LoadedPreferences = std::map<PreferenceId, LoadedRecord<Preference>>;
using LoadedAutoStart = std::map<uint32_t, LoadedRecord<AutoStartItem>>;
using LoadedConfigs = std::map<std::pair<uint32_t, bool>, LoadedRecord<ConfigSetting>>;

/// What the store has handed out since the profiles were loaded. Saving compares with these values, not with what is
/// stored by then: what differs from them is what the user has changed, and nothing else is.
struct LoadedRecords {
  std::map<uint32_t, Profile> profiles;                      // the values alone: the records are the caller's
  std::map<uint32_t, std::weak_ptr<const Profile>> created;  // new profiles, which are not stored yet
  std::map<uint32_t, LoadedPreferences> preferences;         // by profile
  std::map<uint32_t, LoadedAutoStart> autoStartItems;        // by profile
  std::map<uint32_t, AutoStartTable> newAutoStartItems;      // made for the user, by profile; confirmed ones are new
  uint32_t nextCopyId = 1U << 30;  // for entries that are not stored: above the numbers of those that are
  LoadedConfigs configs;           // by profile; true for the automatic one
};
