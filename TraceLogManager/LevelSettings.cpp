#include "TraceLogManager/LevelSettings.h"

#include <string>

#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Registry/TraceFlags.h"

namespace {

const std::wstring kSourceLevelsKey = std::wstring(kClientKey) + L"\\TraceLevels";

LONG WriteLevel(const std::wstring& key, const std::wstring& name, uint16_t level) {
  const DWORD number = level;
  return RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), name.c_str(), REG_DWORD, &number, sizeof(number));
}

}  // namespace

uint16_t ReadGlobalLevel() { return GetTraceLevel(); }

uint16_t ReadSourceLevel(uint32_t source) {
  return static_cast<uint16_t>(ReadRegistryDword(HKEY_LOCAL_MACHINE, kSourceLevelsKey, std::to_wstring(source), 0));
}

LONG WriteGlobalLevel(uint16_t level) { return WriteLevel(kClientKey, kTraceLevelValue, level); }

LONG WriteSourceLevel(uint32_t source, uint16_t level) {
  return WriteLevel(kSourceLevelsKey, std::to_wstring(source), level);
}
