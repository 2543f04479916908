#include "tests/ui/ModalDriver.h"

#include "tests/support/WaitUntil.h"
#include "tests/ui/DialogWindows.h"

ModalDriver::ModalDriver(SheetDriver& sheet, int button) : sheet_(sheet) {
  sheet.Click(button);
  if (!WaitUntil([&] { return (window_ = sheet.MessageBoxWindow()) != nullptr; })) Fail("no dialog came");
}

std::wstring ModalDriver::Title() const { return TextOf(window_); }

// Asked for, since the window may be another program's.
std::wstring ModalDriver::Text(int id) const {
  wchar_t text[512] = {};
  SendMessageW(Control(id), WM_GETTEXT, ARRAYSIZE(text), reinterpret_cast<LPARAM>(text));
  return text;
}

void ModalDriver::Type(int id, const std::wstring& text) const {
  SendMessageW(Control(id), EM_SETSEL, 0, -1);
  SendMessageW(Control(id), WM_CLEAR, 0, 0);
  for (const wchar_t character : text) SendMessageW(Control(id), WM_CHAR, character, 0);
}

bool ModalDriver::PressKeyUntil(const std::function<bool()>& effect, WORD key,
                                const std::vector<WORD>& modifiers) const {
  return ::PressKeyUntil(window_, effect, key, modifiers);
}

void ModalDriver::Close(int button) const {
  PostMessageW(window_, WM_COMMAND, static_cast<WPARAM>(button), 0);
  ExpectEnd();
}

void ModalDriver::ExpectEnd() const {
  if (!WaitUntil([this] { return !IsWindow(window_); })) Fail("the dialog stays open");
  SendMessageW(sheet_.Page(), WM_NULL, 0, 0);
}
