#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "Database/Profiles/Profile.h"
#include "tests/ui/sequence/StoredSettings.h"

/// A server, or a name, that a profile can have a setting for: the column of its configuration that holds the value,
/// and the member of the profile that says where it comes from.
struct ServerField {
  std::string column;
  wchar_t ProfileColumns::*mode;
};
const std::vector<ServerField>& ServerFields();

/// The configurations with the servers that users have entered.
class ServersModel {
 public:
  /// The row of a profile. It is read from the database when it is needed for the first time; one that is not stored
  /// yet has an empty one.
  Row& Read(uint32_t profile, bool isStored, const StoredSettings& stored);

  /// Puts what the user has changed into the row of a profile, which is added if there is none. Whether there was
  /// anything to put; nowhere without `stored`.
  bool Save(uint32_t profile, uint32_t storedId, StoredSettings* stored) const;

 private:
  std::map<uint32_t, Row> before_;
  std::map<uint32_t, Row> now_;
};
