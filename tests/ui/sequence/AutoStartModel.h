#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "tests/ui/sequence/StoredSettings.h"

/// The autostart entries of the profiles, which new ones can get copies of.
class AutoStartModel {
 public:
  struct List {
    std::vector<Row> rows;
    bool own = false;  // not inherited
  };

  /// The entries of a profile, or those of the nearest one along the links from `first` on which has any. They are read
  /// from the database when they are needed for the first time.
  const List& Read(uint32_t profile, uint32_t first, const StoredSettings& stored);

  /// A new profile gets copies of the entries that are another one's own, which have been read.
  void Copy(uint32_t source, uint32_t profile);

  /// Adds the entries of a new profile to the rows: copies, and where it overrides the defaults `first` those that it
  /// inherits.
  void Save(uint32_t profile, uint32_t storedId, uint32_t first, bool overrides, StoredSettings& stored) const;

 private:
  std::map<uint32_t, List> lists_;
};
