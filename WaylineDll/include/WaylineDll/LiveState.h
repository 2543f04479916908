#pragma once

#include <cstdint>
#include <string>

#include "Database/Profiles/PreferenceId.h"
#include "WaylineDll/Api.h"
#include "WaylineDll/TimeoutValues.h"

/// State of the client's connection.
enum class FSMState : uint32_t {
  Disconnected = 0,
  Connecting = 1,
  Connected = 2,
  Disconnecting = 3,
};

/// Values that the client stores between runs.
namespace Bookmark {
enum class Index : uint32_t {
  ShowServerSettings = 8,
};
}

/// Id of the profile that the client uses now; 0 when there is none. (The name is spelled so in the library.)
WAYLINE_API uint32_t GetActiveProfileIdExoprt();

/// The time-outs of the active profile: maximum session, inactivity limit and threshold period. 0 means that none is
/// set or known, except for kUnknownTimeout and kUnlimitedTimeout. Null pointers are skipped.
WAYLINE_API void GetActiveProfileTimeouts2(Duration* session, Duration* idle, Duration* threshold);

/// Nonzero while the client holds a connection. Exported as ordinal 2 only.
uint32_t IsConnected();

/// State of the connection's state machine.
WAYLINE_API FSMState GetFSMState();

/// Id of the network location whose proxy configuration is in force; 0 when there is none.
WAYLINE_API uint32_t GetActiveProxyLocationId();

/// Changes a check-box preference of the active profile.
WAYLINE_API void UpdateActiveProfilePreference(PreferenceId preference, bool on);

/// Whether the multi-homing preference may be shown and changed: false when the setting cannot be read, else `on` is
/// whether the administrator has switched it on.
WAYLINE_API bool IsMultiHomingControlAuthorized(bool* on);

/// A stored value as text; false, and `text` left alone, when it is not stored.
WAYLINE_API bool BookmarkGetString(Bookmark::Index index, std::wstring& text);

/// A stored value as a flag; false, and `flag` left alone, when it is not stored.
WAYLINE_API bool BookmarkGetBool(Bookmark::Index index, bool& flag);
