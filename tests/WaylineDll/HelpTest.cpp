#include "WaylineDll/Help.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "tests/support/BrowserStandIn.h"
#include "tests/support/MessageBoxAnswer.h"
#include "tests/support/RegisteredService.h"
#include "tests/support/ServiceLog.h"

namespace {

constexpr uint32_t kCommand = 15;

TEST(Help, OpensThePageOfATopic) {
  const BrowserStandIn browser;
  DisplayHelp(1036, nullptr, kCommand);
  EXPECT_EQ(browser.OpenedPage(), HelpPage(L"1036.html"));
}

TEST(Help, OpensTheTableOfContentsForATopicWithoutAPage) {
  const BrowserStandIn browser;
  DisplayHelp(4711, nullptr, kCommand);
  EXPECT_EQ(browser.OpenedPage(), HelpPage(L"index.html"));
}

TEST(Help, SaysWhereThePageIsWhenItCannotBeOpened) {
  const RegisteredService service;  // the message is logged
  const ServiceLog log;
  BrowserStandIn browser;
  browser.SetProgram(L"C:\\missing.exe");
  const HWND parent = CreateWindowExW(0, L"STATIC", L"Parent", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr, nullptr,
                                      nullptr, nullptr);
  const auto box = AnswerMessageBox(MessageBoxAnswer::Button(IDOK), [&] { DisplayHelp(1036, parent, kCommand); });
  DestroyWindow(parent);
  EXPECT_EQ(box.text,
            L"The help page could not be opened. You find it in the file\n" + HelpPage(L"1036.html").wstring());
  EXPECT_EQ(box.owner, parent);
  EXPECT_TRUE(log.Has(": Message: The help page could not be opened."));
}

}  // namespace
