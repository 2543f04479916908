#pragma once

#include <cstdint>
#include <string>

/// A DWORD of the CurrentInstall key of the user who is logged on, also when the process runs as `SYSTEM`; 0 when it
/// cannot be read. Failures are logged.
uint32_t ReadInstallDword(const std::wstring& valueName);
