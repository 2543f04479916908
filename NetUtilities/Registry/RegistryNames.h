#pragma once

// The keys and values of the registry that administrators and support staff set. All are only read.

/// Where the client keeps its settings, below HKEY_LOCAL_MACHINE.
inline constexpr wchar_t kClientKey[] = LR"(Software\Ostrel\Wayline)";

/// Settings of the current installation, below HKEY_LOCAL_MACHINE or a user's hive.
inline constexpr wchar_t kCurrentInstallKey[] = LR"(Software\Ostrel\Wayline\CurrentInstall)";

// Values of kClientKey.
inline constexpr wchar_t kTraceLevelValue[] = L"TraceLevel";
inline constexpr wchar_t kLoggedOnUserValue[] = L"LoggedOnUser";
inline constexpr wchar_t kDumpTypeValue[] = L"DumpType";
inline constexpr wchar_t kBypassHardwareRenderingValue[] = L"BypassHardwareRendering";
inline constexpr wchar_t kPreventMultiHomingValue[] = L"PreventMultiHoming";

// Values of kCurrentInstallKey for the machine.
inline constexpr wchar_t kInstallPathValue[] = L"Path";
inline constexpr wchar_t kSharedSettingsValue[] = L"SharedSettings";
inline constexpr wchar_t kDebugOutputValue[] = L"DebugOutput";

// Values of kCurrentInstallKey for a user.
inline constexpr wchar_t kTraceFlagsValue[] = L"TraceFlags";
