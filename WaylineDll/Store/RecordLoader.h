#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "Database/Profiles/ServiceInfo.h"
#include "Database/SQLite/SQLite.h"
#include "WaylineDll/Store/LoadedRecords.h"

/// Reads the records that belong to a profile, with those that it inherits. Nothing is returned when reading fails,
/// which is logged.
class RecordLoader {
 public:
  /// `sqlite` has the database open and outlives this.
  explicit RecordLoader(SQLite& sqlite) : sqlite_(sqlite) {}

  /// A record for every preference that the client has: what the profile stores itself, for the others what the nearest
  /// profile along its links stores, else the built-in value. All are records of `profileId`. The links are followed
  /// from `firstId`, which is the profile itself unless it is not stored yet.
  std::optional<LoadedPreferences> LoadPreferences(uint32_t profileId, uint32_t firstId) const;

  /// The autostart list of the profile itself, else copies of that of the nearest profile along its links which has
  /// one; built-in headers for the phases that have none there. Numbers of records that are not stored go on from
  /// `nextId`. Links are followed as above.
  std::optional<LoadedAutoStart> LoadAutoStart(uint32_t profileId, uint32_t firstId, uint32_t& nextId) const;

  /// All network services in the order of their ids.
  std::optional<std::vector<ServiceRecord>> LoadServices() const;

  /// The profile's configuration; an empty one when it has none.
  std::optional<LoadedRecord<ConfigSetting>> LoadConfig(uint32_t profileId, bool automatic) const;

 private:
  SQLite& sqlite_;
};
