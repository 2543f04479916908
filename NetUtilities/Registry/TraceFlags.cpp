#include "NetUtilities/Registry/TraceFlags.h"

#include <windows.h>

#include <chrono>

#include "NetUtilities/Registry/InstallDword.h"
#include "NetUtilities/Registry/RefreshedDword.h"
#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Registry/RegistryPlatform.h"
#include "NetUtilities/Registry/TraceBits.h"

namespace {

constexpr unsigned kFlagCount = 32;
constexpr uint16_t kDefaultTraceLevel = 4;

// A coarse clock that costs next to nothing: every traced function asks.
std::chrono::steady_clock::time_point Now() {
  return std::chrono::steady_clock::time_point(std::chrono::milliseconds(registryPlatform.tickCount()));
}

RefreshedDword traceFlags([] { return ReadInstallDword(kTraceFlagsValue); }, Now);
RefreshedDword debugOutput(
    [] { return uint32_t{ReadRegistryDword(HKEY_LOCAL_MACHINE, kCurrentInstallKey, kDebugOutputValue, 0)}; }, Now);

}  // namespace

uint32_t GetTraceFlags() { return traceFlags.Get(); }

bool IsTraceFlagSet(unsigned bit) { return bit == kTraceAlways || ((GetTraceFlags() >> (bit % kFlagCount)) & 1) != 0; }

uint16_t GetTraceLevel() {
  RegistryKey key;
  DWORD level = kDefaultTraceLevel;
  if (key.Open(HKEY_LOCAL_MACHINE, kClientKey, KEY_READ) == ERROR_SUCCESS) {
    key.ReadDwordAs(L"enum ", kTraceLevelValue, level);
  }
  return static_cast<uint16_t>(level);
}

bool IsDebugOutputEnabled() { return debugOutput.Get() != 0; }
