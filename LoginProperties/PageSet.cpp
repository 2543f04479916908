#include "LoginProperties/PageSet.h"

std::vector<Page> PagesOf(unsigned mode, bool (*isOnWinLogonDesktop)()) {
  switch (mode) {
    case 1: {
      std::vector<Page> pages = {Page::General, Page::Preferences};
      if (!isOnWinLogonDesktop()) pages.push_back(Page::Autostart);
      if (!isOnWinLogonDesktop()) pages.push_back(Page::Proxy);
      pages.push_back(Page::Timeouts);
      pages.push_back(Page::WiFiSwitching);
      return pages;
    }
    case 2:
      return {Page::Timeouts};
    case 3:
      return {Page::WiFiSwitching};
    default:
      return {};
  }
}
