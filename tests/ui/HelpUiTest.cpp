// Help, asked for on the sheet.

#include <windows.h>

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "tests/support/BrowserStandIn.h"
#include "tests/ui/SheetDriver.h"
#include "tests/ui/TestContext.h"

namespace {

// The page of a topic exists while this object lives, also when it is not written yet.
class WrittenTopic {
 public:
  explicit WrittenTopic(const std::wstring& page) : file_(HelpPage(page)), added_(!exists(file_)) {
    if (added_) std::ofstream(file_) << "<!DOCTYPE html>";
  }
  ~WrittenTopic() {
    std::error_code ignored;
    if (added_) std::filesystem::remove(file_, ignored);
  }
  WrittenTopic(const WrittenTopic&) = delete;
  WrittenTopic& operator=(const WrittenTopic&) = delete;

 private:
  std::filesystem::path file_;
  bool added_;
};

}  // namespace

TEST(SheetHelp, TheButtonOpensThePagesTopic) {
  LoginPropertiesContext context = MakeContext();
  SheetDriver sheet(context);
  for (const auto& [tab, page] : {std::pair{L"General", L"1031.html"}, std::pair{L"Preferences", L"1033.html"},
                                  std::pair{L"Autostart", L"1038.html"}, std::pair{L"Proxy", L"1050.html"},
                                  std::pair{L"Timeouts", L"1036.html"}, std::pair{L"Wi-Fi Switching", L"1132.html"}}) {
    const BrowserStandIn browser;
    const WrittenTopic topic(page);
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
