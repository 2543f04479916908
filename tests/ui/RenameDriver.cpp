#include "tests/ui/RenameDriver.h"

#include "LoginProperties/General/GeneralControls.h"
#include "LoginProperties/General/RenameProfileControls.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/DialogWindows.h"

RenameDriver::RenameDriver(SheetDriver& sheet) : sheet_(sheet) {
  sheet.Click(IDC_GENERAL_RENAME);
  if (!WaitUntil([&] { return (window_ = sheet.MessageBoxWindow()) != nullptr; })) Fail("no dialog came");
}

std::wstring RenameDriver::Title() const { return TextOf(window_); }

// Asked for, since the window may be another program's.
std::wstring RenameDriver::Name() const {
  wchar_t text[512] = {};
  SendMessageW(Field(), WM_GETTEXT, ARRAYSIZE(text), reinterpret_cast<LPARAM>(text));
  return text;
}

HWND RenameDriver::Field() const { return GetDlgItem(window_, IDC_RENAME_NAME); }

void RenameDriver::Type(const std::wstring& name) const {
  SendMessageW(Field(), EM_SETSEL, 0, -1);
  SendMessageW(Field(), WM_CLEAR, 0, 0);
  for (const wchar_t character : name) SendMessageW(Field(), WM_CHAR, character, 0);
}

void RenameDriver::Close(int button) const {
  PostMessageW(window_, WM_COMMAND, static_cast<WPARAM>(button), 0);
  if (!WaitUntil([this] { return !IsWindow(window_); })) Fail("the dialog stays open");
  SendMessageW(sheet_.Page(), WM_NULL, 0, 0);
}
