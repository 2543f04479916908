#pragma once

#include <string>
#include <vector>

#include "WaylineDll/Api.h"
#include "WaylineDll/Bookmarks.h"
#include "WaylineDll/ConnectionState.h"
#include "WaylineDll/SettingsAccess.h"
#include "WaylineDll/SettingsTables.h"

// How a host program gets at the client's settings. There is one settings database at a time; the operations
// are called on one thread. They say what went wrong; nothing when all went well.

/// Opens the settings database of the process in place of the one that was open. A missing file is created with the
/// sample data, and to be edited one of an earlier version is upgraded. A file that cannot be used, or that could not
/// be saved to, is left as it is.
WAYLINE_API Failure OpenSettings(const std::wstring& file, SettingsAccess access = SettingsAccess::Edit);

/// Full path of the settings database that is open; empty while none is.
WAYLINE_API std::wstring GetSettingsFile();

/// Fills `profiles` with all profiles and the values in force for each: those that it inherits included. From now on,
/// until the changes are saved or discarded, whoever asks the library for a record gets the same one for the same row.
WAYLINE_API Failure LoadProfiles(ProfileTable& profiles);

/// Stores what has changed since the records were loaded, all or none of it: those of `tables`, and all that the
/// library has handed out since then. What others have stored meanwhile stays, except where the user has changed the
/// very same value; a profile that is no longer there costs what belongs to it, and the report says so. After a failure
/// all can be saved again; afterwards the records are the caller's, and are loaded anew before the next saving.
WAYLINE_API Failure SaveSettings(const SettingsTables& tables, SaveReport& report);

/// Forgets the records that were handed out since the profiles were loaded, and what was changed in them.
WAYLINE_API void DiscardChanges();

/// Stores what the client's connection does, as whoever asks is then told. This client has no connection of its own, so
/// that pages can be tried out in every state.
WAYLINE_API Failure SetConnectionState(FSMState state);

/// Stores a value for those who read it as a text or as a flag, which is "0" or "1".
WAYLINE_API Failure SetBookmark(Bookmark::Index index, const std::wstring& value);

/// Closes the settings database, if one is open.
WAYLINE_API void CloseSettings();

/// Delivers what the library has logged, and gives the logging service back; later messages are dropped. For the end of
/// the program.
WAYLINE_API void StopLibraryLog();
