#include "WaylineDll/Help.h"

#include <windows.h>

#include <shellapi.h>

#include <filesystem>

#include "WaylineDll/Messages.h"
#include "WaylineDll/Resources/StringIds.h"
#include "WaylineDll/StringDb.h"

namespace {

using std::filesystem::path;

path HelpFolder() {
  std::wstring file(MAX_PATH, L'\0');
  file.resize(GetModuleFileNameW(GetResourceHandle(ModuleId::ClientLibrary), file.data(), MAX_PATH));
  return path(file).parent_path() / L"help";
}

path PageOf(uint32_t topic) {
  const path page = HelpFolder() / (std::to_wstring(topic) + L".html");
  std::error_code ignored;
  return std::filesystem::exists(page, ignored) ? page : HelpFolder() / L"index.html";
}

bool OpenInBrowser(HWND parent, const path& page) {
  SHELLEXECUTEINFOW info{};
  info.cbSize = sizeof(info);
  info.fMask = SEE_MASK_FLAG_NO_UI;
  info.hwnd = parent;
  info.lpVerb = L"open";
  info.lpFile = page.c_str();
  info.nShow = SW_SHOWNORMAL;
  return ShellExecuteExW(&info) != FALSE;
}

}  // namespace

void DisplayHelp(uint32_t topic, HWND parent, uint32_t) {
  const path page = PageOf(topic);
  if (!OpenInBrowser(parent, page)) {
    DisplayError(parent, ModuleId::ClientLibrary, IDS_HELP_NOT_OPENED, page.wstring(), {}, {});
  }
}
