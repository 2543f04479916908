#include "LoginProperties/Autostart/RemoveArguments.h"

#include <windows.h>

#include <shlwapi.h>

#include <cwchar>

#include "LoginProperties/ProfilePage/CutText.h"

std::wstring RemoveArguments(std::wstring_view command) {
  std::wstring program = CutText(std::wstring(command), MAX_PATH);
  PathRemoveArgsW(program.data());
  program.resize(std::wcslen(program.c_str()));
  return program;
}
