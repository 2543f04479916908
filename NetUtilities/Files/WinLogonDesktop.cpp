#include "NetUtilities/Files/WinLogonDesktop.h"

#include <windows.h>

#include "NetUtilities/Files/IniSwitches.h"
#include "NetUtilities/Text/IgnoringCase.h"

bool IsStartedOnWinLogonDesktop() {
  STARTUPINFOW startup{};
  GetStartupInfoW(&startup);
  return startup.lpDesktop != nullptr && EqualsNoCaseAscii(startup.lpDesktop, kWinLogonDesktop);
}

bool IsRunningInWinLogonDesktop() {
  static const bool running = IsSwitchOn(kRunningInWinLogonDesktop) || IsStartedOnWinLogonDesktop();
  return running;
}
