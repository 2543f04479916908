#include "NetUtilities/OwnModule.h"

// The linker's name for the start of the module.
extern "C" IMAGE_DOS_HEADER __ImageBase;  // NOLINT(bugprone-reserved-identifier)

HMODULE OwnModule() { return reinterpret_cast<HMODULE>(&__ImageBase); }
