#include "WaylineDll/MultiHoming.h"

#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Registry/RegistryNames.h"

bool IsMultiHomingControlAuthorized(bool* on) {
  RegistryKey client;
  DWORD setting = 0;
  if (client.Open(HKEY_LOCAL_MACHINE, kClientKey, KEY_READ) != ERROR_SUCCESS ||
      client.ReadDword(kPreventMultiHomingValue, setting, 0) != ERROR_SUCCESS) {
    return false;
  }
  *on = setting != 0;
  return true;
}
