#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "Database/Profiles/Preference.h"
#include "Database/Profiles/Profile.h"
#include "LoginProperties/SheetMode.h"
#include "WaylineDll/AutoStartItem.h"
#include "WaylineDll/ConfigSetting.h"

/// What the log says of a sheet, from its opening to its end: enough for support to follow what the user did. Pages are
/// named by the titles of their tabs. The current profile is null when there is none.
namespace SheetLog {

using CurrentProfile = std::shared_ptr<Profile>;

/// The sheet opens in a mode.
void Opened(SheetMode mode, const ProfileTable& profiles, const CurrentProfile& current);

/// The user has pressed OK: names the profiles that the caller gets back changed, and counts the other records.
void Confirmed(const ProfileTable& profiles, const PreferenceTable& preferences, const AutoStartTable& autoStartItems,
               const ConfigTable& manualConfigs, const ConfigTable& autoConfigs);

/// The user has closed the sheet otherwise.
void Cancelled();

/// The sheet could not be created. `error` is the system's reason as log lines append it, empty when it gives none.
void NotShown(SheetMode mode, size_t pages, const std::wstring& error);

/// A page has come to the front.
void PageShown(std::wstring_view page, const CurrentProfile& current);

/// A page keeps in front of the others because of a value that is not valid.
void PageRefused(std::wstring_view page);

/// The user has chosen another profile.
void ProfileSelected(const CurrentProfile& selected);

/// The user has clicked "Override defaults".
void OverrideClicked(std::wstring_view page, const CurrentProfile& current, bool overrides);

/// The current profile gets another name.
void ProfileRenamed(const CurrentProfile& current, std::wstring_view newName);

/// The current profile cannot be removed; the user is told why.
void RemovalRefused(const CurrentProfile& current);

/// The current profile is removed.
void ProfileRemoved(const CurrentProfile& current);

/// A new profile has been made, with what was copied from the profile `source` when that is not 0.
void ProfileCreated(const CurrentProfile& created, uint32_t source);

/// The user has finished the wizard for the user ID and network service of the current profile.
void NetworkConfigured(const CurrentProfile& current);

/// The user has finished the wizard for the servers of the current profile.
void ServersConfigured(const CurrentProfile& current);

/// The administrator's policy makes the profile follow the defaults.
void ResetByPolicy(std::wstring_view page, const CurrentProfile& current);

}  // namespace SheetLog
