#include "NetUtilities/TraceFlags.h"

#include <windows.h>

#include "NetUtilities/RefreshedDword.h"
#include "NetUtilities/RegistryKey.h"

namespace {

constexpr unsigned kAlways = 32;
constexpr unsigned kFlagCount = 32;
constexpr uint16_t kDefaultTraceLevel = 4;

RefreshedDword traceFlags([] { return ReadInstallDword(L"TraceFlags"); });
RefreshedDword debugOutput([] {
  return uint32_t{ReadRegistryDword(HKEY_LOCAL_MACHINE, kCurrentInstallKey, L"DebugOutput", 0)};
});

}  // namespace

uint32_t GetTraceFlags() { return traceFlags.Get(); }

bool IsTraceFlagSet(unsigned bit) { return bit == kAlways || (GetTraceFlags() >> (bit % kFlagCount) & 1) != 0; }

uint16_t GetTraceLevel() {
  RegistryKey key;
  DWORD level = kDefaultTraceLevel;
  if (key.Open(HKEY_LOCAL_MACHINE, kClientKey, KEY_READ) == ERROR_SUCCESS) {
    key.ReadDwordAs(L"enum ", L"TraceLevel", level);
  }
  return static_cast<uint16_t>(level);
}

bool IsDebugOutputEnabled() { return debugOutput.Get() != 0; }

uint32_t ReadInstallDword(const std::wstring& valueName) {
  return ReadRegistryDword(HKEY_CURRENT_USER, kCurrentInstallKey, valueName, 0);
}
