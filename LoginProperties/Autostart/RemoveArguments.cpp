#include "LoginProperties/Autostart/RemoveArguments.h"

#include <windows.h>

#include <shlwapi.h>

#include "LoginProperties/ProfilePage/CutText.h"

std::wstring RemoveArguments(std::wstring_view command) {
  std::wstring program = CutText(std::wstring(command), MAX_PATH);
  PathRemoveArgsW(program.data());
  return program.c_str();
}
