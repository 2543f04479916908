#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "Database/Profiles/Profile.h"
#include "WaylineDll/ConfigSetting.h"

/// The servers and names that a profile can have settings for.
enum class ServerField : size_t { Dns1, Dns2, Wins1, Wins2, DomainName, SearchList };

inline constexpr size_t kServerFieldCount = 6;

// Where a server comes from, as a profile stores it. Other letters may be stored, and are carried.
inline constexpr wchar_t kAutomaticServer = L'a';
inline constexpr wchar_t kManualServer = L'm';
inline constexpr wchar_t kNoServer = L'n';

/// One of the settings. The value has a meaning only where the mode is manual.
struct ServerSetting {
  wchar_t mode = kAutomaticServer;
  std::wstring value;

  bool operator==(const ServerSetting&) const = default;
};

/// All of them, in the order of ServerField.
using ServerSettings = std::array<ServerSetting, kServerFieldCount>;

ServerSettings ReadServers(const ProfileColumns& profile, const ConfigSetting& config);

/// Stores the modes, and the values of those that are manual: the others keep what they had.
void WriteServers(const ServerSettings& servers, ProfileColumns& profile, ConfigSetting& config);

/// A value, which has been trimmed, as it is stored; nothing when the field cannot have it.
std::optional<std::wstring> AcceptedServer(ServerField field, const std::wstring& text);
