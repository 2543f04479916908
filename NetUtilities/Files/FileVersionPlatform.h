#pragma once

#include <windows.h>

/// The platform's functions behind GetFileVersionString that a test cannot make fail, or that a 64-bit process has no
/// use for. Tests put others in their place.
struct FileVersionPlatform {
  decltype(&IsWow64Process) isWow64Process = IsWow64Process;
  decltype(&Wow64DisableWow64FsRedirection) disableRedirection = Wow64DisableWow64FsRedirection;
  decltype(&Wow64RevertWow64FsRedirection) revertRedirection = Wow64RevertWow64FsRedirection;
  decltype(&GetFileVersionInfoW) getFileVersionInfo = GetFileVersionInfoW;
};

extern FileVersionPlatform fileVersionPlatform;
