#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Database/Profiles/ServiceInfo.h"
#include "Database/SQLite/SQLite.h"
#include "WaylineDll/SettingsAccess.h"
#include "WaylineDll/SettingsTables.h"
#include "WaylineDll/Store/LoadedRecords.h"
#include "WaylineDll/Store/StoredValues.h"

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

  /// Fills the table with all profiles, each with the values in force: those that it inherits included. From now on,
  /// until the changes are saved or discarded, the same records are handed out for the same rows.
  Failure LoadProfiles(ProfileTable& profiles);

  /// Makes a profile that is not stored yet, with an id of its own and the values in force of the defaults that the
  /// active profile follows, or else the first there are. Needs the profiles to have been loaded.
  Failure CreateProfile(std::shared_ptr<Profile>& profile);

  // The loading operations return false, with an empty table or null, when reading fails, which is logged. The records
  // are the profile's own: one that is changed is stored as its own, whether it was inherited or not.

  /// Fills the table with a record for every preference, with the value in force for the profile.
  bool LoadPreferences(uint32_t profileId, PreferenceTable& preferences);

  /// As above, without the preferences that the profile neither stores itself nor has had changed. False also when
  /// there are none, as for a profile that cannot own any.
  bool LoadOwnPreferences(uint32_t profileId, PreferenceTable& preferences);

  /// Fills the table with the autostart entries in force for the profile: its own, else copies of those of its
  /// defaults.
  bool LoadAutoStart(uint32_t profileId, AutoStartTable& items);

  /// As above, of a list that the profile stores itself or that was changed, without the entries that were removed.
  /// False also when there are none.
  bool LoadOwnAutoStart(uint32_t profileId, AutoStartTable& items);

  /// Makes copies of autostart entries the own ones of a profile, adds them to `copies` and returns their number. They
  /// take the place of what the profile inherits, and are handed out for it from then on. A profile that has got
  /// copies already gets no others: those are added once more.
  uint64_t CopyAutoStart(uint32_t profileId, const AutoStartTable& source, AutoStartTable& copies);

  /// A new autostart entry of a profile in the first phase, whose number no other entry has. Once it is marked new it
  /// is handed out with the profile's entries, and saved. Needs the profiles to have been loaded.
  std::shared_ptr<AutoStartItem> CreateAutoStartItem(uint32_t profileId);

  /// Gives a new profile, whose link is final, copies of all preferences and autostart entries that are `sourceId`'s
  /// own. They are handed out for it from then on, and saved with it. False, with nothing copied, when they cannot be
  /// read, which is logged, or the profiles have not been loaded.
  bool CopyLists(uint32_t sourceId, uint32_t newId);

  /// All network services in the order of their ids. False when they cannot be read, which is logged.
  bool LoadServices(std::vector<ServiceRecord>& services);

  /// The proxy configuration of a profile: the one that the client found, or the one that the user entered. Empty where
  /// there is none.
  std::shared_ptr<ConfigSetting> LoadConfig(uint32_t profileId, bool automatic);

  /// Stores what has changed, all or nothing: the records of `tables` and those that were handed out, compared with
  /// what they were loaded as. What others have stored meanwhile stays where the user has not changed the same value.
  /// Then the records handed out are forgotten; after a failure they are not.
  Failure Save(const SettingsTables& tables, SaveReport& report);

  /// Forgets the records that were handed out, and what was changed in them.
  void DiscardChanges() { loaded_.reset(); }

  /// Stores the value of a preference as the own one of a profile that is stored.
  Failure SetPreference(uint32_t profileId, PreferenceId preference, int32_t value);

  /// Id of the profile that the client uses; 0 when there is none. The last that was read when it cannot be read, which
  /// is logged.
  uint32_t GetActiveProfileId();

  /// The administrator's limits in force for the active profile; none when it cannot be read.
  ProfileTimeouts GetActiveTimeouts();

  /// The single values that the client remembers, while this lives.
  StoredValues Values() const { return StoredValues(Connection()); }

 private:
  sqlite3* Connection() const;
  int32_t LoadProfile(uint32_t id, Profile& profile);
  int32_t ReadActiveProfileId();
  LoadedRecords& RecordsOr(LoadedRecords& fresh);
  uint32_t FirstOfChain(uint32_t profileId) const;
  const LoadedPreferences* FindPreferences(LoadedRecords& records, uint32_t profileId);
  const LoadedAutoStart* FindAutoStart(LoadedRecords& records, uint32_t profileId);
  void CopyPreferences(LoadedRecords& records, uint32_t sourceId, uint32_t newId);
  uint32_t FindDefaultsForNew(const std::map<uint32_t, Profile>& profiles);
  void NoteStored(const Preference& preference);

  std::optional<LoadedRecords> loaded_;  // from the loading of the profiles until they are saved or discarded
  uint32_t activeProfileId_ = 0;         // when it was last read
  SQLite sqlite_;
};
