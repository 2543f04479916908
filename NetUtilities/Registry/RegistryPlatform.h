#pragma once

#include <windows.h>

/// The platform's functions behind everything that reads the registry. Tests put others in their place.
struct RegistryPlatform {
  decltype(&RegOpenKeyExW) openKey = RegOpenKeyExW;
  decltype(&RegCloseKey) closeKey = RegCloseKey;
  decltype(&RegQueryValueExW) queryValue = RegQueryValueExW;
  decltype(&RegQueryInfoKeyW) queryInfo = RegQueryInfoKeyW;
  decltype(&RegEnumKeyExW) enumKey = RegEnumKeyExW;
  decltype(&GetTickCount64) tickCount = GetTickCount64;  // the clock by which values that are kept grow old
};

extern RegistryPlatform registryPlatform;
