// The "Program Settings" dialog by itself: what it answers, and its help.

#include "LoginProperties/Proxy/SettingsDialog.h"

#include <gtest/gtest.h>

#include "LoginProperties/Proxy/SettingsControls.h"
#include "tests/support/BrowserStandIn.h"
#include "tests/support/LibraryLogService.h"
#include "tests/support/LoadedModule.h"
#include "tests/support/MessageBoxAnswer.h"

namespace {

// What the framework calls.
struct Exposed : SettingsDialog {
  using SettingsDialog::OnCommand;
  using SettingsDialog::OnNotify;
  using SettingsDialog::SettingsDialog;
};

class SettingsDialogAlone : public testing::Test {
 protected:
  SettingsDialogAlone() {
    dialog_.Load(L"a:1;b:2", true);
    window_ = CreateDialogParamW(module_.Handle(), dialog_.GetTemplateId(), parent_, static_cast<DLGPROC>(dialog_),
                                 reinterpret_cast<LPARAM>(&dialog_));
  }
  ~SettingsDialogAlone() override {
    DestroyWindow(window_);
    DestroyWindow(parent_);
  }

  int Notify(UINT code, UINT newState) {
    NMLISTVIEW change{};
    change.hdr = {GetDlgItem(window_, IDC_SETTINGS_LIST), IDC_SETTINGS_LIST, code};
    change.iItem = 1;
    change.uNewState = newState;
    return dialog_.OnNotify(IDC_SETTINGS_LIST, reinterpret_cast<int64_t>(&change));
  }

  const LibraryLogService service_;  // the message about help is logged
  LoadedModule module_{L"Pavise.dll"};
  HWND parent_ =
      CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 600, 500, nullptr, nullptr, nullptr, nullptr);
  Exposed dialog_{module_.Handle(), MAKEINTRESOURCEW(IDD_PROXY_SETTINGS), parent_};
  HWND window_ = nullptr;
};

TEST_F(SettingsDialogAlone, TakesTheCommandsOfItsButtonsAlone) {
  ASSERT_NE(window_, nullptr);
  for (const int id : {IDC_SETTINGS_ADD, IDC_SETTINGS_CHANGE, IDC_SETTINGS_DELETE, IDCANCEL}) {
    EXPECT_EQ(dialog_.OnCommand(static_cast<uint64_t>(id), 0), 1) << id;
  }
  for (const int id : {IDC_SETTINGS_LIST, IDC_SETTINGS_ADDRESS, IDC_SETTINGS_PORT, 64000}) {
    EXPECT_EQ(dialog_.OnCommand(static_cast<uint64_t>(id), 0), 0) << id;
  }
}

TEST_F(SettingsDialogAlone, TakesTheNotificationThatARowIsSelectedAlone) {
  constexpr auto kChanged = static_cast<UINT>(LVN_ITEMCHANGED);
  EXPECT_EQ(Notify(kChanged, LVIS_FOCUSED), 0);
  EXPECT_EQ(Notify(static_cast<UINT>(NM_CLICK), LVIS_SELECTED), 0);
  EXPECT_EQ(Notify(kChanged, LVIS_SELECTED), 1);
}

TEST_F(SettingsDialogAlone, OwnsTheHelpOfTheKeyAndNotThatOfTheCommand) {
  BrowserStandIn browser;
  browser.SetProgram(L"C:\\missing.exe");
  const auto ownerAfter = [this](UINT message, WPARAM command, LPARAM parameter) {
    return AnswerMessageBox(MessageBoxAnswer::Button(IDOK), [&] { SendMessageW(window_, message, command, parameter); })
        .owner;
  };
  HELPINFO help{};
  EXPECT_EQ(ownerAfter(WM_HELP, 0, reinterpret_cast<LPARAM>(&help)), window_);
  EXPECT_EQ(ownerAfter(WM_COMMAND, IDHELP, 0), nullptr);
}

TEST_F(SettingsDialogAlone, HelpOpensItsTopic) {
  for (const UINT message : {UINT{WM_HELP}, UINT{WM_COMMAND}}) {
    const BrowserStandIn browser;
    HELPINFO help{};
    SendMessageW(window_, message, IDHELP, message == WM_HELP ? reinterpret_cast<LPARAM>(&help) : 0);
    EXPECT_EQ(browser.OpenedPage(), HelpPage(L"1049.html"));
  }
}

}  // namespace
