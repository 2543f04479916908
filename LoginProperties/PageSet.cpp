#include "LoginProperties/PageSet.h"

std::vector<Page> PagesOf(SheetMode mode, bool (*isOnWinLogonDesktop)()) {
  switch (mode) {
    case SheetMode::Full: {
      std::vector<Page> pages = {Page::General, Page::Preferences};
      if (!isOnWinLogonDesktop()) pages.push_back(Page::Autostart);
      if (!isOnWinLogonDesktop()) pages.push_back(Page::Proxy);
      pages.push_back(Page::Timeouts);
      pages.push_back(Page::WiFiSwitching);
      return pages;
    }
    case SheetMode::TimeoutsOnly:
      return {Page::Timeouts};
    case SheetMode::WiFiSwitchingOnly:
      return {Page::WiFiSwitching};
  }
  return {};
}
