#include "NetUtilities/Files/IniSwitches.h"

#include "NetUtilities/Files/IniFile.h"
#include "NetUtilities/Module/Singleton.h"

bool IsSwitchOn(const IniSwitch& testSwitch) {
  const auto ini = Singleton<IniFile>::Get();
  return ini && ini->GetBool(testSwitch.section, testSwitch.key);
}
