#include "tests/ui/WizardDriver.h"

#include <commctrl.h>
#include <prsht.h>
#include <windowsx.h>

#include <algorithm>
#include <atomic>
#include <future>
#include <utility>

#include "tests/support/WaitUntil.h"
#include "tests/ui/DialogWindows.h"

namespace {

constexpr UINT kLimitMilliseconds = 20000;

// How often real input is repeated that had no effect, and how long that is waited for.
constexpr int kTries = 5;
constexpr auto kPatience = std::chrono::seconds(3);

bool IsComboBox(HWND control) {
  wchar_t name[16] = {};
  GetClassNameW(control, name, ARRAYSIZE(name));
  return _wcsicmp(name, WC_COMBOBOXW) == 0;
}

// Messages to be seen in the queue of a thread, each with a number of its own.
constexpr UINT kMarker = WM_APP + 0x1000;
std::atomic<WPARAM> lastMarkerSeen = 0;

LRESULT CALLBACK OnMessageTaken(int code, WPARAM removed, LPARAM parameter) {
  const MSG& message = *reinterpret_cast<const MSG*>(parameter);
  if (code == HC_ACTION && removed == PM_REMOVE && message.message == kMarker) lastMarkerSeen = message.wParam;
  return CallNextHookEx(nullptr, code, removed, parameter);
}

void PutOnClipboard(const std::wstring& text) {
  if (!WaitUntil([] { return OpenClipboard(nullptr) != FALSE; })) Fail("the clipboard stays closed");
  EmptyClipboard();
  const size_t size = (text.size() + 1) * sizeof(wchar_t);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
  memcpy(GlobalLock(memory), text.c_str(), size);
  GlobalUnlock(memory);
  SetClipboardData(CF_UNICODETEXT, memory);
  CloseClipboard();
}

}  // namespace

WizardDriver::WizardDriver(WizardId wizard, SetupWizardData_t* data) {
  std::promise<DWORD> started;
  thread_ = std::thread([this, wizard, data, &started] {
    owner_ = CreateWindowExW(0, L"STATIC", L"Client", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 240, 120, nullptr,
                             nullptr, nullptr, nullptr);
    const HWND child =
        CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, 100, 50, owner_, nullptr, nullptr, nullptr);
    started.set_value(GetCurrentThreadId());
    result_ = SetupWizardTether().ShowAsSecondaryWindow(child, wizard, data);
    DestroyWindow(owner_);
  });
  threadId_ = started.get_future().get();
  if (!WaitForWizard()) {
    thread_.join();
    Fail("the wizard did not appear");
  }
}

WizardDriver::WizardDriver(DWORD threadId) : threadId_(threadId) {
  if (!WaitForWizard()) Fail("the wizard did not appear");
}

WizardDriver::~WizardDriver() {
  while (HWND box = MessageBoxWindow()) {
    if (!CloseMessageBox(box, IDCANCEL) && !CloseMessageBox(box, IDOK)) break;
  }
  if (IsOpen()) {
    PostMessageW(wizard_, WM_COMMAND, IDCANCEL, 0);
    WaitUntil([this] { return !IsOpen(); });
  }
  if (thread_.joinable()) thread_.join();
}

HWND WizardDriver::Page() const { return PropSheet_GetCurrentPageHwnd(wizard_); }

std::optional<WizardPage> WizardDriver::CurrentPage() const {
  constexpr std::pair<int, WizardPage> kFirstControls[] = {
      {IDC_WIZARD_NAME_LABEL, WizardPage::Name},
      {IDC_WIZARD_DEFAULTS_LABEL, WizardPage::Defaults},
      {IDC_WIZARD_ACCOUNT_LABEL, WizardPage::UserId},
      {IDC_WIZARD_SERVICE_LABEL, WizardPage::Service},
      {IDC_WIZARD_SERVERS_GROUP, WizardPage::ServerChoice},
      {IDC_WIZARD_DNS1_MODE_LABEL, WizardPage::Servers},
      {IDC_WIZARD_DOMAIN_MODE_LABEL, WizardPage::Domains},
      {IDC_WIZARD_COPY_LABEL, WizardPage::Copy},
      {IDC_WIZARD_SUMMARY_LABEL, WizardPage::Summary},
  };
  for (const auto& [control, page] : kFirstControls) {
    if (GetDlgItem(Page(), control) != nullptr) return page;
  }
  return std::nullopt;
}

std::wstring WizardDriver::Title() const { return TextOf(wizard_); }

HWND WizardDriver::Control(int id) const {
  const HWND control = GetDlgItem(Page(), id);
  if (control == nullptr) Fail("the page has no such control");
  return control;
}

bool WizardDriver::IsEnabled(int id) const { return IsWindowEnabled(Control(id)) != FALSE; }
bool WizardDriver::IsChecked(int id) const { return Button_GetCheck(Control(id)) == BST_CHECKED; }
std::wstring WizardDriver::Text(int id) const { return TextOf(Control(id)); }

std::vector<std::wstring> WizardDriver::Items(int id) const {
  const HWND list = Control(id);
  const bool combo = IsComboBox(list);
  const LRESULT count = SendMessageW(list, combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0);
  std::vector<std::wstring> items;
  for (WPARAM index = 0; index < static_cast<WPARAM>(count); ++index) {
    const LRESULT length = SendMessageW(list, combo ? CB_GETLBTEXTLEN : LB_GETTEXTLEN, index, 0);
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    SendMessageW(list, combo ? CB_GETLBTEXT : LB_GETTEXT, index, reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    items.push_back(std::move(text));
  }
  return items;
}

std::vector<uint32_t> WizardDriver::Values(int id) const {
  const HWND list = Control(id);
  const bool combo = IsComboBox(list);
  const LRESULT count = SendMessageW(list, combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0);
  std::vector<uint32_t> values;
  for (WPARAM index = 0; index < static_cast<WPARAM>(count); ++index) {
    values.push_back(static_cast<uint32_t>(SendMessageW(list, combo ? CB_GETITEMDATA : LB_GETITEMDATA, index, 0)));
  }
  return values;
}

std::optional<uint32_t> WizardDriver::SelectedValue(int id) const {
  const HWND list = Control(id);
  const LRESULT index = SendMessageW(list, IsComboBox(list) ? CB_GETCURSEL : LB_GETCURSEL, 0, 0);
  if (index < 0) return std::nullopt;
  return Values(id).at(static_cast<size_t>(index));
}

std::optional<std::wstring> WizardDriver::Selected(int id) const {
  const HWND list = Control(id);
  const LRESULT index = SendMessageW(list, IsComboBox(list) ? CB_GETCURSEL : LB_GETCURSEL, 0, 0);
  if (index < 0) return std::nullopt;
  return Items(id).at(static_cast<size_t>(index));
}

int WizardDriver::FocusedControl() const {
  const HWND focus = FocusOf(threadId_);
  return focus != nullptr ? GetDlgCtrlID(focus) : 0;
}

std::wstring WizardDriver::SelectedText(int id) const {
  const DWORD selection = Edit_GetSel(Control(id));
  return Text(id).substr(LOWORD(selection), HIWORD(selection) - LOWORD(selection));
}

bool WizardDriver::CanPress(int button) const {
  const HWND control = GetDlgItem(wizard_, button);
  return IsWindowVisible(control) != FALSE && IsWindowEnabled(control) != FALSE;
}

void WizardDriver::Click(int id) {
  if (!IsEnabled(id)) Fail("the control to click is disabled");
  Act(Control(id), BM_CLICK);
}

void WizardDriver::Pick(int id, const std::wstring& item) {
  const HWND list = Control(id);
  const LRESULT index = SendMessageW(list, IsComboBox(list) ? CB_FINDSTRINGEXACT : LB_FINDSTRINGEXACT,
                                     static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(item.c_str()));
  if (index < 0) Fail("the list has no such item");
  PickIndex(id, static_cast<size_t>(index));
}

void WizardDriver::PickValue(int id, uint32_t value) {
  const std::vector<uint32_t> values = Values(id);
  const auto found = std::ranges::find(values, value);
  if (found == values.end()) Fail("the list has no item with this value");
  PickIndex(id, static_cast<size_t>(found - values.begin()));
}

void WizardDriver::PickIndex(int id, size_t index) {
  const HWND list = Control(id);
  const bool combo = IsComboBox(list);
  if (!IsEnabled(id)) Fail("the list to pick from is disabled");
  SendMessageW(list, combo ? CB_SETCURSEL : LB_SETCURSEL, index, 0);
  static_assert(CBN_SELCHANGE == LBN_SELCHANGE);
  Act(Page(), WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
}

void WizardDriver::Type(int id, const std::wstring& text) {
  if (!IsEnabled(id)) Fail("the field to type into is disabled");
  TryFocus(id);
  Act(Control(id), EM_SETSEL, 0, -1);
  if (text.empty()) Act(Control(id), WM_CLEAR);
  for (const wchar_t character : text) Act(Control(id), WM_CHAR, character);
}

void WizardDriver::Paste(int id, const std::wstring& text) {
  PutOnClipboard(text);
  TryFocus(id);
  Act(Control(id), EM_SETSEL, 0, -1);
  Act(Control(id), WM_PASTE);
}

void WizardDriver::TryFocus(int id) { Act(wizard_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(id)), TRUE); }

void WizardDriver::TryFocusButton(int button) {
  Act(wizard_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(wizard_, button)), TRUE);
}

void WizardDriver::PressNext() { Press(kNext); }
void WizardDriver::PressBack() { Press(kBack); }
void WizardDriver::PressFinish() { Press(kFinish); }
void WizardDriver::PressCancel() { Press(IDCANCEL); }

void WizardDriver::Press(int button) {
  if (!CanPress(button)) Fail("the wizard has no such button now");
  Act(GetDlgItem(wizard_, button), BM_CLICK);
}

void WizardDriver::CloseWindow() { Act(wizard_, WM_SYSCOMMAND, SC_CLOSE); }

bool WizardDriver::PressKeyUntil(const std::function<bool()>& effect, WORD key, const std::vector<WORD>& modifiers) {
  return TryUntil(effect, [&] { SendKey(key, modifiers); });
}

bool WizardDriver::ClickButtonUntil(const std::function<bool()>& effect, int button) {
  RECT area{};
  GetWindowRect(GetDlgItem(wizard_, button), &area);
  return TryUntil(effect, [&] { SendClick({(area.left + area.right) / 2, (area.top + area.bottom) / 2}); });
}

bool WizardDriver::TryUntil(const std::function<bool()>& effect, const std::function<void()>& input) {
  const auto isInForeground = [this] {
    if (GetForegroundWindow() == wizard_) return true;
    SetForegroundWindow(wizard_);
    return false;
  };
  for (int tries = 0; tries < kTries; ++tries) {
    if (!WaitUntil(isInForeground)) Fail("the wizard does not come to the foreground");
    input();
    if (WaitUntil(effect, kPatience)) return true;
  }
  return false;
}

HWND WizardDriver::MessageBoxWindow() const {
  return FindDialog(threadId_, [](HWND window) { return !IsSheet(window); });
}

std::optional<std::wstring> WizardDriver::MessageBoxText() const {
  const HWND box = MessageBoxWindow();
  return box != nullptr ? std::optional(TextOfMessageBox(box)) : std::nullopt;
}

void WizardDriver::AnswerMessageBox(int button) {
  const HWND box = MessageBoxWindow();
  if (box == nullptr) Fail("there is no message box to answer");
  if (!CloseMessageBox(box, button)) Fail("the message box stays open");
  Settle();
}

bool WizardDriver::IsOpen() const { return IsWindow(wizard_) != FALSE; }

int64_t WizardDriver::Result() {
  if (!WaitUntil([this] { return !IsOpen(); })) Fail("the wizard stays open");
  thread_.join();
  return result_;
}

bool WizardDriver::WaitForWizard() {
  queueHook_.reset(SetWindowsHookExW(WH_GETMESSAGE, OnMessageTaken, nullptr, threadId_));
  const bool appeared = WaitUntil([this] {
    wizard_ = FindDialog(threadId_, IsWizard);
    return MessageBoxWindow() != nullptr ||
           (wizard_ != nullptr && Page() != nullptr && IsWindowVisible(Page()) != FALSE);
  });
  if (appeared) Settle();
  return appeared;
}

// The message is handled on the wizard's thread as if it had been sent there, but this thread goes on, so that it can
// answer a message box that the message brings up.
void WizardDriver::Act(HWND window, UINT message, WPARAM wordParameter, LPARAM longParameter) {
  SendNotifyMessageW(window, message, wordParameter, longParameter);
  Settle();
}

// A message that is sent after another one is handled after it, or in the loop of the message box that it shows. By
// then a page may have posted something to itself, to look at where the focus went: that is dealt with before what is
// posted now is taken.
void WizardDriver::Settle() const {
  DWORD_PTR ignored = 0;
  const bool answered = SendMessageTimeoutW(wizard_, WM_NULL, 0, 0, SMTO_NORMAL, kLimitMilliseconds, &ignored) != 0;
  if (!answered && IsOpen()) Fail("the wizard does not answer");
  if (!queueHook_) return;  // the queue of another program cannot be seen
  static WPARAM markers = 0;
  const WPARAM marker = ++markers;
  if (!PostMessageW(wizard_, kMarker, marker, 0)) return;
  if (!WaitUntil([&] { return lastMarkerSeen == marker || !IsOpen(); })) Fail("the wizard does not look at messages");
}
