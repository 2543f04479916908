#pragma once

// Tables of the settings database that hold what belongs to login profiles.
inline constexpr wchar_t kProfileTable[] = L"Profiles";
inline constexpr wchar_t kPreferenceTable[] = L"Preferences";
inline constexpr wchar_t kAutoStartTable[] = L"AutoStart";
inline constexpr wchar_t kConfigSettingTable[] = L"ConfigSettings";

// The network services that profiles link to.
inline constexpr wchar_t kServiceTable[] = L"Services";

// Names of the root profiles that an administrator makes. Behind the tilde stand two blanks.
inline constexpr wchar_t kCustomRoot[] = L"custom root";
inline constexpr wchar_t kDefaultCustomRoot[] = L"default custom";
inline constexpr wchar_t kCustomRootProfile[] = L"~  custom root profile";
inline constexpr wchar_t kDefaultCustomProfile[] = L"~  default custom profile";
