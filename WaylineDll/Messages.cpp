#include "WaylineDll/Messages.h"

#include "NetUtilities/Log.h"
#include "NetUtilities/Text/Format.h"
#include "WaylineDll/StringDb.h"

namespace {

int ShowBox(HWND parent, UINT style, ModuleId module, unsigned id, const std::vector<std::wstring_view>& items) {
  const std::wstring text = LoadStringWithSubS(module, id, false, items);
  Log(LogLevel::Info, Format(L"Message: {}", text));
  return MessageBoxW(parent, text.c_str(), GetProductDisplayName(false).c_str(), style);
}

}  // namespace

void DisplayError(HWND parent, ModuleId module, unsigned id, std::wstring_view first, std::wstring_view second,
                  std::wstring_view third) {
  ShowBox(parent, MB_OK | MB_ICONERROR, module, id, {first, second, third});
}

void DisplayMessage(HWND parent, ModuleId module, unsigned id, std::wstring_view first, std::wstring_view second) {
  ShowBox(parent, MB_OK | MB_ICONINFORMATION, module, id, {first, second});
}

int AskYesNo(HWND parent, ModuleId module, unsigned id, std::wstring_view first, std::wstring_view second) {
  const bool yes = ShowBox(parent, MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2, module, id, {first, second}) == IDYES;
  Log(LogLevel::Info, yes ? L"Answer: yes" : L"Answer: no");
  return yes ? 1 : 0;
}
