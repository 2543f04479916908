#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "WaylineDll/ConnectionState.h"
#include "WaylineDll/SettingsTables.h"

struct sqlite3;

/// Single values that the client remembers between runs, in the database of a connection, which outlives this. What
/// cannot be read is logged, and taken as missing.
class StoredValues {
 public:
  explicit StoredValues(sqlite3* connection) : connection_(connection) {}

  /// Disconnected when it is missing.
  FSMState GetConnectionState() const;
  Failure SetConnectionState(FSMState state) const;

  /// Id of the network location whose proxies are in force; 0 when it is missing.
  uint32_t GetProxyLocation() const;

  std::optional<std::wstring> GetBookmark(uint32_t id) const;

  /// The same for a flag; nothing when it is neither "0" nor "1".
  std::optional<bool> GetBookmarkFlag(uint32_t id) const;
  Failure SetBookmark(uint32_t id, std::wstring_view value) const;

 private:
  sqlite3* connection_;
};

/// The highest id of a profile that was removed; 0 when none was. The SQLite result code, 0 for success; nothing is
/// logged.
int32_t ReadLastRemovedProfile(sqlite3* connection, uint32_t& id);

/// The profile that the client holds a connection with; 0 while it holds none. Result as above.
int32_t ReadConnectedProfile(sqlite3* connection, uint32_t& id);
