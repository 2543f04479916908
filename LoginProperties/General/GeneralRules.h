#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "Database/Profiles/Profile.h"

// What the General page does with profiles. Null records of a table stand for nothing.

/// Why a profile cannot be removed.
enum class RemovalRefusal {
  None,
  LastProfile,  // the user could select no other
  NotListed,    // the selector does not show it: what is removed is what the user sees there
  Connected,    // the client holds a connection with it
  Followed,     // others inherit from it
};

/// The first reason that keeps a profile from being removed. `active` is the client's active profile.
RemovalRefusal RefuseRemoval(const ProfileTable& profiles, const Profile& profile, uint32_t active, bool isConnected);

/// Names of the profiles that are linked to this one and not removed, with commas between them; those without a name
/// are called by their id. Of many only the first ten, and then "...".
std::wstring NamesOfFollowers(const ProfileTable& profiles, uint32_t id);

/// Removes a profile as far as the sheet goes: the client deletes it when it gets the tables back. Returns the profile
/// to show then, the first that the user can select; null when there is none.
std::shared_ptr<Profile> RemoveProfile(const ProfileTable& profiles, Profile& profile);

/// Takes over the account, user ID, certificate and network service that were changed in a copy of the profile. Marks
/// it changed only if there was any.
void TakeUserIdAndService(const Profile& edited, Profile& profile);
