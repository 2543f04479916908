#pragma once

#include <windows.h>

/// Works out beforehand what the path of a dump consists of, so that a crash only has to add the time, and gives the
/// calling thread room on its stack for the filter to run after an overflow. A dump is written without this too, with
/// more work in the crashing process, or, under an overflow, perhaps not. Not for DllMain. May be called again, but
/// not by two threads at once.
void PrepareCrashDump();

/// Writes one dump of this process into the client's shared folder, which must exist; a file of the same second is
/// overwritten from its start. `exceptionPointers` tells what happened to the calling thread; null when nothing did.
/// Returns 0. Every failure is silent, but that the registry value `DumpType` cannot be read. While another thread
/// writes a dump, waits for the end of that instead.
int WriteCrashDump(EXCEPTION_POINTERS* exceptionPointers);

/// The filter for exceptions that nobody handles: writes a dump, and leaves the rest to the system.
LONG WINAPI CrashDumpFilter(EXCEPTION_POINTERS* exceptionPointers);
