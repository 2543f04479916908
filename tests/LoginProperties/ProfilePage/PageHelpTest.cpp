// Which window owns what a page's help brings up: here the message that it cannot be opened.

#include <windows.h>

#include <gtest/gtest.h>
#include <prsht.h>

#include "LoginProperties/Autostart/AutostartControls.h"
#include "LoginProperties/Autostart/AutostartDialog.h"
#include "LoginProperties/General/GeneralControls.h"
#include "LoginProperties/General/GeneralDialog.h"
#include "LoginProperties/Preferences/PreferenceControls.h"
#include "LoginProperties/Preferences/PreferenceDialog.h"
#include "LoginProperties/Proxy/ProxyControls.h"
#include "LoginProperties/Proxy/ProxyDialog.h"
#include "LoginProperties/Timeouts/TimeoutControls.h"
#include "LoginProperties/Timeouts/TimeoutDialog.h"
#include "LoginProperties/WiFiSwitching/AutoReconnectControls.h"
#include "LoginProperties/WiFiSwitching/AutoReconnectDialog.h"
#include "tests/support/BrowserStandIn.h"
#include "tests/support/LibraryLogService.h"
#include "tests/support/LoadedModule.h"
#include "tests/support/MessageBoxAnswer.h"

namespace {

class PageHelp : public testing::Test {
 protected:
  PageHelp() { browser_.SetProgram(L"C:\\missing.exe"); }
  ~PageHelp() override { DestroyWindow(parent_); }

  template <typename Page>
  void ExpectOwners(int templateId, HWND ofKey, HWND ofButton) {
    const Page page(module_.Handle(), MAKEINTRESOURCEW(templateId), parent_);
    const HWND window = CreateDialogParamW(module_.Handle(), page.GetTemplateId(), parent_, static_cast<DLGPROC>(page),
                                           reinterpret_cast<LPARAM>(&page));
    HELPINFO help{};
    EXPECT_EQ(OwnerAfter(window, WM_HELP, reinterpret_cast<LPARAM>(&help)), ofKey) << templateId;
    NMHDR button{window, 0, PSN_HELP};
    EXPECT_EQ(OwnerAfter(window, WM_NOTIFY, reinterpret_cast<LPARAM>(&button)), ofButton) << templateId;
    DestroyWindow(window);
  }

  static HWND OwnerAfter(HWND page, UINT message, LPARAM parameter) {
    return AnswerMessageBox(MessageBoxAnswer::Button(IDOK), [&] { SendMessageW(page, message, 0, parameter); }).owner;
  }

  const LibraryLogService service_;  // the message is logged
  BrowserStandIn browser_;
  LoadedModule module_{L"Pavise.dll"};
  HWND parent_ =
      CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 600, 500, nullptr, nullptr, nullptr, nullptr);
};

TEST_F(PageHelp, BelongsToThePageForTheKeyOnGeneralAndForTheButtonOnMostOthers) {
  ExpectOwners<GeneralDialog>(IDD_GENERAL, parent_, nullptr);
  ExpectOwners<PreferenceDialog>(IDD_PREFERENCE, nullptr, parent_);
  ExpectOwners<AutostartDialog>(IDD_AUTOSTART, nullptr, nullptr);
  ExpectOwners<ProxyDialog>(IDD_PROXY, nullptr, parent_);
  ExpectOwners<TimeoutDialog>(IDD_TIMEOUT, nullptr, parent_);
  ExpectOwners<AutoReconnectDialog>(IDD_AUTO_RECONNECT, nullptr, parent_);
}

}  // namespace
