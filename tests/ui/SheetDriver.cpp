#include "tests/ui/SheetDriver.h"

#include <commctrl.h>
#include <prsht.h>
#include <windowsx.h>

#include <algorithm>
#include <future>

#include "tests/support/WaitUntil.h"
#include "tests/ui/DialogWindows.h"

namespace {

constexpr UINT kLimitMilliseconds = 20000;

// How often real input is repeated that had no effect, and how long that is waited for.
constexpr int kTries = 5;
constexpr auto kPatience = std::chrono::seconds(3);

std::wstring ItemText(HWND list, int index) {
  std::wstring text(static_cast<size_t>(ComboBox_GetLBTextLen(list, index)) + 1, L'\0');
  ComboBox_GetLBText(list, index, text.data());
  text.pop_back();
  return text;
}

POINT MiddleOf(const RECT& area) { return {(area.left + area.right) / 2, (area.top + area.bottom) / 2}; }

}  // namespace

INT_PTR ShowSheetOfModule(LoginPropertiesContext* context) {
  using Entry = INT_PTR (*)(LoginPropertiesContext*);
  static const HMODULE module = LoadLibraryW(L"Pavise.dll");
  if (module == nullptr) Fail("Pavise.dll cannot be loaded");
  static const auto entry =
      reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(module, "ShowLoginProperties")));
  if (entry == nullptr) Fail("Pavise.dll has no ShowLoginProperties");
  context->resourceInstance = module;
  return entry(context);
}

SheetDriver::SheetDriver(LoginPropertiesContext& context) {
  std::promise<DWORD> started;
  thread_ = std::thread([this, &context, &started] {
    owner_ = CreateWindowExW(0, L"STATIC", L"Client", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 240, 120, nullptr,
                             nullptr, nullptr, nullptr);
    context.parentWindow = owner_;
    started.set_value(GetCurrentThreadId());
    result_ = ShowSheetOfModule(&context);
    context.parentWindow = nullptr;
    DestroyWindow(owner_);
  });
  threadId_ = started.get_future().get();
  if (!WaitForSheet()) {
    // Without a display the sheet returns at once; its thread must not outlive this object.
    if (sheet_ != nullptr) PostMessageW(sheet_, WM_CLOSE, 0, 0);
    thread_.join();
    Fail("the sheet did not appear");
  }
}

SheetDriver::SheetDriver(DWORD threadId) : threadId_(threadId) {
  if (!WaitForSheet()) Fail("the sheet of the other program did not appear");
}

SheetDriver::~SheetDriver() {
  while (HWND box = MessageBoxWindow()) {
    PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
    PostMessageW(box, WM_CLOSE, 0, 0);
    if (!WaitUntil([this, box] { return MessageBoxWindow() != box; })) break;
  }
  if (const HWND wizard = FindDialog(threadId_, IsWizard)) {
    PostMessageW(wizard, WM_COMMAND, IDCANCEL, 0);
    WaitUntil([wizard] { return !IsWindow(wizard); });
  }
  if (IsOpen()) PostMessageW(sheet_, WM_COMMAND, IDCANCEL, 0);
  if (thread_.joinable()) thread_.join();
}

HWND SheetDriver::Page() const { return PropSheet_GetCurrentPageHwnd(sheet_); }

std::wstring SheetDriver::Title() const { return TextOf(sheet_); }

std::vector<std::wstring> SheetDriver::Tabs() const {
  const HWND tabs = PropSheet_GetTabControl(sheet_);
  std::vector<std::wstring> titles;
  for (int index = 0; index < TabCtrl_GetItemCount(tabs); ++index) {
    wchar_t text[64] = {};
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = ARRAYSIZE(text);
    TabCtrl_GetItem(tabs, index, &item);
    titles.emplace_back(item.pszText);
  }
  return titles;
}

std::wstring SheetDriver::CurrentTab() const {
  return Tabs().at(static_cast<size_t>(TabCtrl_GetCurSel(PropSheet_GetTabControl(sheet_))));
}

size_t SheetDriver::IndexOfTab(const std::wstring& title) const {
  const std::vector<std::wstring> titles = Tabs();
  const auto found = std::ranges::find(titles, title);
  if (found == titles.end()) Fail("the sheet has no such tab");
  return static_cast<size_t>(found - titles.begin());
}

void SheetDriver::SelectTab(const std::wstring& title) { SelectTab(IndexOfTab(title)); }

void SheetDriver::SelectTab(size_t index) { Act(sheet_, PSM_SETCURSEL, index); }

HWND SheetDriver::Control(int id) const {
  const HWND control = GetDlgItem(Page(), id);
  if (control == nullptr) Fail("the page has no such control");
  return control;
}

bool SheetDriver::IsEnabled(int id) const { return IsWindowEnabled(Control(id)) != FALSE; }
bool SheetDriver::IsChecked(int id) const { return Button_GetCheck(Control(id)) == BST_CHECKED; }
bool SheetDriver::HasFocus(int id) const { return FocusedControl() == id; }

std::wstring SheetDriver::Text(int id) const { return TextOf(Control(id)); }

std::vector<std::wstring> SheetDriver::Items(int id) const {
  const HWND list = Control(id);
  std::vector<std::wstring> items;
  for (int index = 0; index < ComboBox_GetCount(list); ++index) items.push_back(ItemText(list, index));
  return items;
}

std::vector<uint32_t> SheetDriver::Values(int id) const {
  const HWND list = Control(id);
  std::vector<uint32_t> values;
  for (int index = 0; index < ComboBox_GetCount(list); ++index) {
    values.push_back(static_cast<uint32_t>(ComboBox_GetItemData(list, index)));
  }
  return values;
}

std::optional<std::wstring> SheetDriver::Selected(int id) const {
  const int index = ComboBox_GetCurSel(Control(id));
  if (index == CB_ERR) return std::nullopt;
  return ItemText(Control(id), index);
}

std::optional<uint32_t> SheetDriver::SelectedValue(int id) const {
  const int index = ComboBox_GetCurSel(Control(id));
  if (index == CB_ERR) return std::nullopt;
  return static_cast<uint32_t>(ComboBox_GetItemData(Control(id), index));
}

void SheetDriver::Click(int id) {
  if (!IsEnabled(id)) Fail("the control to click is disabled");
  Act(Control(id), BM_CLICK);
}

void SheetDriver::Pick(int id, const std::wstring& item) {
  const int index = ComboBox_FindStringExact(Control(id), -1, item.c_str());
  if (index == CB_ERR) Fail("the list has no such item");
  PickIndex(id, index);
}

void SheetDriver::PickValue(int id, uint32_t value) {
  const std::vector<uint32_t> values = Values(id);
  const auto found = std::ranges::find(values, value);
  if (found == values.end()) Fail("the list has no item with this value");
  PickIndex(id, static_cast<int>(found - values.begin()));
}

void SheetDriver::PickIndex(int id, int index) {
  const HWND list = Control(id);
  if (!IsEnabled(id)) Fail("the list to pick from is disabled");
  ComboBox_SetCurSel(list, index);
  Act(Page(), WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
}

void SheetDriver::Type(const std::wstring& text) {
  const HWND edit = Control(FocusedControl());
  Act(edit, EM_SETSEL, 0, -1);
  for (const wchar_t character : text) Act(edit, WM_CHAR, character);
}

void SheetDriver::ClearSelection(int id) { ComboBox_SetCurSel(Control(id), -1); }

bool SheetDriver::PressKeyUntil(const std::function<bool()>& effect, WORD key, const std::vector<WORD>& modifiers) {
  return ::PressKeyUntil(sheet_, effect, key, modifiers);
}

void SheetDriver::ClickByMouse(POINT point, int times) const {
  BringToForeground(sheet_);
  SendClick(point, times);
}

bool SheetDriver::ClickByMouseUntil(const std::function<bool()>& effect, POINT point, int times) const {
  for (int tries = 0; tries < kTries; ++tries) {
    ClickByMouse(point, times);
    if (WaitUntil(effect, kPatience)) return true;
  }
  return false;
}

bool SheetDriver::ClickByMouseUntil(const std::function<bool()>& effect, HWND window) const {
  RECT area{};
  GetWindowRect(window, &area);
  return ClickByMouseUntil(effect, MiddleOf(area));
}

void SheetDriver::SelectTabByMouse(const std::wstring& title) {
  const HWND tabs = PropSheet_GetTabControl(sheet_);
  RECT area{};
  TabCtrl_GetItemRect(tabs, static_cast<int>(IndexOfTab(title)), &area);
  MapWindowPoints(tabs, nullptr, reinterpret_cast<POINT*>(&area), 2);
  const auto effect = [&] { return MessageBoxText().has_value() || CurrentTab() == title; };
  if (!ClickByMouseUntil(effect, MiddleOf(area))) Fail("the tab does not answer to the mouse");
  Settle();
}

void SheetDriver::TryFocus(HWND control) { Act(sheet_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE); }

void SheetDriver::TryFocus(int id) { TryFocus(Control(id)); }

void SheetDriver::Focus(int id) {
  TryFocus(id);
  if (!WaitUntil([this, id] { return HasFocus(id); })) Fail("the control does not take the focus");
}

int SheetDriver::FocusedControl() const {
  const HWND focus = FocusOf(threadId_);
  return focus != nullptr ? GetDlgCtrlID(focus) : 0;
}

HWND SheetDriver::MessageBoxWindow() const {
  return FindDialog(threadId_, [this](HWND window) { return window != sheet_ && !IsSheet(window); });
}

std::optional<std::wstring> SheetDriver::MessageBoxText() const {
  const HWND box = MessageBoxWindow();
  if (box == nullptr) return std::nullopt;
  return TextOfMessageBox(box);
}

void SheetDriver::AnswerMessageBox(int button) {
  const HWND box = MessageBoxWindow();
  if (box == nullptr) Fail("there is no message box to answer");
  if (!CloseMessageBox(box, button)) Fail("the message box stays open");
  Settle();
}

void SheetDriver::PressHelp() { Act(sheet_, PSM_PRESSBUTTON, PSBTN_HELP); }

void SheetDriver::PressOk() { PressEnding(PSBTN_OK); }

void SheetDriver::PressCancel() { PressEnding(PSBTN_CANCEL); }

void SheetDriver::PressEnding(int button) {
  Act(sheet_, PSM_PRESSBUTTON, static_cast<WPARAM>(button));
  // The sheet looks whether it has ended when its loop gets a message; that one was not from the loop.
  PostMessageW(sheet_, WM_NULL, 0, 0);
}

void SheetDriver::PressOkByMouse() { PressEndingByMouse(IDOK); }

void SheetDriver::PressCancelByMouse() { PressEndingByMouse(IDCANCEL); }

void SheetDriver::PressEndingByMouse(int button) {
  const auto effect = [this] { return !IsOpen() || MessageBoxText().has_value(); };
  if (!ClickByMouseUntil(effect, GetDlgItem(sheet_, button))) Fail("the button does not answer to the mouse");
}

bool SheetDriver::IsOpen() const { return IsWindow(sheet_) != FALSE; }

INT_PTR SheetDriver::Result() {
  if (!WaitUntil([this] { return !IsOpen(); })) Fail("the sheet stays open");
  thread_.join();
  return result_;
}

bool SheetDriver::WaitForSheet() {
  const bool appeared = WaitUntil([this] {
    sheet_ = FindDialog(threadId_, IsSheet);
    return sheet_ != nullptr && Page() != nullptr && IsWindowVisible(Page()) != FALSE;
  });
  if (appeared) Settle();
  return appeared;
}

// The message is handled on the sheet's thread as if it had been sent there, but this thread goes on, so that it can
// answer a message box that the message brings up.
void SheetDriver::Act(HWND window, UINT message, WPARAM wordParameter, LPARAM longParameter) {
  SendNotifyMessageW(window, message, wordParameter, longParameter);
  Settle();
}

// A message that is sent after another one is handled after it, or in the loop of the message box that it shows.
void SheetDriver::Settle() const {
  DWORD_PTR ignored = 0;
  const bool answered = SendMessageTimeoutW(sheet_, WM_NULL, 0, 0, SMTO_NORMAL, kLimitMilliseconds, &ignored) != 0;
  if (!answered && IsOpen()) Fail("the sheet does not answer");
}
