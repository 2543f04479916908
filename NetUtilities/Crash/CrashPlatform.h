#pragma once

#include <windows.h>

#include <dbghelp.h>
#include <shlobj.h>

/// The platform's functions behind WriteCrashDump that a test cannot make fail, or needs to see. Tests put others in
/// their place.
struct CrashPlatform {
  decltype(&GetLocalTime) localTime = GetLocalTime;
  decltype(&SHGetFolderPathW) folderPath = SHGetFolderPathW;
  decltype(&CreateFileW) createFile = CreateFileW;
  decltype(&CreateThread) createThread = CreateThread;
  decltype(&MiniDumpWriteDump) writeDump = MiniDumpWriteDump;
};

extern CrashPlatform crashPlatform;
