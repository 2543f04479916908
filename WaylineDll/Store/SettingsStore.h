#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Database/SQLite/SQLite.h"
#include "WaylineDll/SettingsAccess.h"
#include "WaylineDll/SettingsTables.h"

/// Limits of a profile's connections; 0 is none.
struct ProfileTimeouts {
  std::chrono::duration<int64_t> session{};
  std::chrono::duration<int64_t> idle{};
  std::chrono::duration<int64_t> threshold{};
};

/// The client's settings in their database. One at a time for a file; used by one thread.
class SettingsStore {
 public:
  SettingsStore() = default;

  /// Closes the database.
  ~SettingsStore();
  SettingsStore(const SettingsStore&) = delete;
  SettingsStore& operator=(const SettingsStore&) = delete;

  /// Opens the database; a missing one is created with sample data. A file that cannot be used is left as it is. Once
  /// only, before everything else.
  Failure Open(const std::wstring& file, SettingsAccess access = SettingsAccess::Edit);

  /// Full path of the database.
  const std::wstring& GetFile() const { return sqlite_.GetPath(); }

  /// Fills the table with all profiles, each with the values in force: those that it inherits included.
  Failure LoadProfiles(ProfileTable& profiles);

  /// Fills the table with the preferences in force for a profile: those that it stores itself, and for the others those
  /// of the nearest profile along its links. All are records of this profile, so that one that is changed is stored as
  /// its own. False, and an empty table, when there are none or they cannot be read, which is logged.
  bool LoadPreferences(uint32_t profileId, PreferenceTable& preferences);

  /// As above with nothing but what the profile stores itself.
  bool LoadOwnPreferences(uint32_t profileId, PreferenceTable& preferences);

  /// The proxy configuration that a profile stores itself: the one that the client found, or the one that the
  /// user entered. Null when there is none or it cannot be read, which is logged.
  std::shared_ptr<ConfigSetting> LoadConfig(uint32_t profileId, bool automatic);

  /// Stores every record whose change state is not `Unchanged`, all or none of them, and lists them in
  /// `report`. A profile stores only the values that were changed: those that it inherits stay inherited. A
  /// removed profile takes everything that belongs to it along. The records keep their change states.
  Failure Save(const SettingsTables& tables, SaveReport& report);

  /// Forgets the records that were handed out, and what was changed in them.
  void DiscardChanges() {}

  /// Changes the value of a preference that a profile stores itself; one that it does not store stays so.
  Failure SetPreference(uint32_t profileId, PreferenceId preference, int32_t value);

  /// Id of the profile that the client uses; 0 when there is none or it cannot be read.
  uint32_t GetActiveProfileId();

  /// The administrator's limits in force for the active profile; none when it cannot be read.
  ProfileTimeouts GetActiveTimeouts();

 private:
  sqlite3* Connection() const;
  int32_t LoadProfile(uint32_t id, Profile& profile);
  bool ReadPreferences(std::wstring_view selection, uint32_t profileId, PreferenceTable& preferences);
  Failure WriteProfiles(const ProfileTable& profiles);
  Failure InsertProfile(const Profile& profile);
  Failure UpdateProfile(const Profile& profile, const Profile& stored);
  Failure RemoveProfiles(const ProfileTable& profiles);
  Failure WriteOthers(const SettingsTables& tables);

  SQLite sqlite_;
};
