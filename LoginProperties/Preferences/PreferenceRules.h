#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "Database/Profiles/Preference.h"
#include "Database/Profiles/Profile.h"
#include "LoginProperties/Preferences/PreferenceTree.h"

/// Id of the profile whose preferences the page loads for `edited`: its own when it overrides the defaults, else the
/// one that it is linked to. Profiles with ids above 10000 always have those of the profile that they are linked to.
uint32_t ProfileToLoad(const Profile& edited);

/// Gives the entries the states that the table says. A choice that is not in the table has no option on; a check box
/// that is not keeps its state.
void ApplyPreferences(const PreferenceTable& preferences, PreferenceTree& tree);

/// What decides about single entries besides the profile's preferences.
struct TreeConditions {
  std::optional<bool> preventMultiHoming;       // as the administrator has set it; nothing when it is not to be shown
  std::optional<bool> bypassHardwareRendering;  // of the machine; nothing when the profile's preference counts
};

/// The state in which an entry is shown, nothing when it is left out.
std::optional<int32_t> ShownState(const PreferenceEntry& entry, const TreeConditions& conditions);

/// The state image that shows an entry.
int StateImage(EntryKind kind, int32_t state);

/// Does what a click on an entry does, in the tree and in the table, whose record it marks changed. Returns the state
/// images that differ afterwards, by entry. An option that is on already is switched off in the tree only: its choice
/// goes on to hold it. A check box without a record does nothing.
std::map<PreferenceId, int> Toggle(PreferenceId id, PreferenceTree& tree, const PreferenceTable& preferences);

/// Sizes of the hashes, in bytes.
inline constexpr size_t kMd5Size = 16;
inline constexpr size_t kSha1Size = 20;

/// Hash of a certificate.
using CertificateHash = std::vector<uint8_t>;

/// The hash that hexadecimal digits spell, with blanks between them or without: 32 digits as of MD5, or 40 as of SHA-1.
/// Nothing for any other text.
std::optional<CertificateHash> ParseCertificateHash(std::wstring_view digits);
