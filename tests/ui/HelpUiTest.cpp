// Help, asked for on the sheet.

#include <windows.h>

#include <gtest/gtest.h>

#include "tests/support/BrowserStandIn.h"
#include "tests/ui/SheetDriver.h"
#include "tests/ui/TestContext.h"

TEST(SheetHelp, TheButtonOpensThePagesTopic) {
  LoginPropertiesContext context = MakeContext();
  SheetDriver sheet(context);
  for (const auto& [tab, page] : {std::pair{L"General", L"1031.html"}, std::pair{L"Preferences", L"1033.html"},
                                  std::pair{L"Autostart", L"1038.html"}, std::pair{L"Proxy", L"1050.html"},
                                  std::pair{L"Timeouts", L"1036.html"}, std::pair{L"Wi-Fi Switching", L"1132.html"}}) {
    const BrowserStandIn browser;
    sheet.SelectTab(tab);
    sheet.PressHelp();
    EXPECT_EQ(browser.OpenedPage(), HelpPage(page)) << tab;
  }
}

TEST(SheetHelp, TheHelpKeyOpensThePagesTopic) {
  for (const auto& [mode, page] :
       {std::pair{SheetMode::TimeoutsOnly, L"1036.html"}, std::pair{SheetMode::WiFiSwitchingOnly, L"1132.html"}}) {
    LoginPropertiesContext context = MakeContext(mode);
    SheetDriver sheet(context);
    const BrowserStandIn browser;
    EXPECT_TRUE(sheet.PressKeyUntil([&browser] { return browser.HasOpened(); }, VK_F1));
    EXPECT_EQ(browser.OpenedPage(), HelpPage(page));
  }
}
