#include "LoginProperties/Autostart/BrowserRules.h"

#include <algorithm>

#include "NetUtilities/Text/IgnoringCase.h"

void AddEdge(std::vector<RegAppItem>& browsers) {
  static const RegAppItem edge = {.name = L"Microsoft Edge",
                                  .command = L"LaunchWinApp.exe",
                                  .executable = L"MicrosoftEdge.exe",
                                  .urlTemplate = L"microsoft-edge:%s"};
  if (std::ranges::find(browsers, edge.name, &RegAppItem::name) == browsers.end()) browsers.push_back(edge);
}

bool IsCommand(std::wstring_view identifier) { return ContainsNoCase(identifier, L"iexplore.exe"); }

RegAppItem FindBrowser(const std::vector<RegAppItem>& browsers, std::wstring_view command) {
  const auto found = std::ranges::find_if(
      browsers, [command](const RegAppItem& browser) { return ContainsNoCase(browser.command, command); });
  return found != browsers.end() ? *found : RegAppItem();
}
