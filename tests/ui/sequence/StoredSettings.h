#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/ui/OtherConnection.h"

/// The last id that defaults can have.
inline constexpr uint32_t kLastRoot = 2000;

/// The last id that a new profile can get, and the last with preferences of its own.
inline constexpr uint32_t kLastWithOwnPreferences = 10000;

/// Rows of preferences by their ids.
using PreferenceRows = std::map<int32_t, Row>;

/// Everything that a settings database holds: rows with all their columns, but for the numbers of rows that mean
/// nothing.
struct StoredSettings {
  std::map<uint32_t, Row> profiles;
  std::map<uint32_t, PreferenceRows> preferences;    // by profile
  std::map<uint32_t, std::vector<Row>> autoStart;    // by profile, in the order of starting
  std::map<std::pair<uint32_t, bool>, Row> configs;  // by profile; true for the automatic one
  std::map<int32_t, Row> services;
  std::map<std::string, std::string> clientState;
  std::map<int32_t, std::string> bookmarks;

  /// The profile that a profile is linked to; 0 for none.
  uint32_t LinkOf(uint32_t profile) const;

  bool IsFollowed(uint32_t profile) const;

  /// A value of `clientState` as a number; 0 where there is none.
  uint32_t Number(const std::string& name) const;

  /// The profile that the client holds a connection with; 0 for none.
  uint32_t ConnectedProfile() const { return Number("ConnectionState") == 2 ? Number("ActiveProfile") : 0; }

  /// What removing a profile does: all that belongs to it goes too, and its id is remembered.
  void Remove(uint32_t profile);
};

StoredSettings ReadSettings(const std::wstring& file);

/// The rows as AllRows gives those of a file.
std::multiset<std::string> RowsOf(const StoredSettings& stored);
