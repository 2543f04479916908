#pragma once

/// A switch of the file of test switches.
struct IniSwitch {
  const wchar_t* section;
  const wchar_t* key;
};

/// Puts the user directory into the folder of the client.
inline constexpr IniSwitch kDebugUserDirectory = {L"Misc", L"DebugUserDirectory"};

/// Treats the process as one that runs on the log-on desktop. Three n: the name is in use.
inline constexpr IniSwitch kRunningInWinLogonDesktop = {L"GINA", L"RunnningInWinLogonDesktop"};

/// Whether a switch is on; off when the file cannot be asked any more.
bool IsSwitchOn(const IniSwitch& testSwitch);
