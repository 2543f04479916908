#pragma once

#include <vector>

#include "LoginProperties/SheetMode.h"

/// The pages of the sheet.
enum class Page {
  General,
  Preferences,
  Autostart,
  Proxy,
  Timeouts,
  WiFiSwitching,
};

/// The pages that the sheet has in a mode, in order; none for a mode that does not exist. On the log-on desktop
/// (asked before each page that could start programs or reach the network there) the full sheet lacks those pages.
std::vector<Page> PagesOf(SheetMode mode, bool (*isOnWinLogonDesktop)());
