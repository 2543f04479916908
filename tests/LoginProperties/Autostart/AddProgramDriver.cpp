#include "tests/LoginProperties/Autostart/AddProgramDriver.h"

#include <windowsx.h>

#include <algorithm>
#include <future>

#include "LoginProperties/Autostart/AddProgramDialog.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/DialogWindows.h"

std::vector<std::wstring> ItemsOf(HWND combo) {
  std::vector<std::wstring> items;
  for (int index = 0; index < ComboBox_GetCount(combo); ++index) {
    std::wstring text(static_cast<size_t>(ComboBox_GetLBTextLen(combo, index)), L'\0');
    ComboBox_GetLBText(combo, index, text.data());
    items.push_back(text);
  }
  return items;
}

AddProgramDriver::AddProgramDriver(const std::shared_ptr<AutoStartItem>& item) {
  static const HMODULE module = LoadLibraryW(L"Pavise.dll");
  std::promise<DWORD> started;
  thread_ = std::thread([this, &item, &started] {
    owner_ = CreateWindowExW(0, L"STATIC", L"Sheet", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 300, 200, 500, 400, nullptr,
                             nullptr, nullptr, nullptr);
    AddProgramDialog dialog(module, MAKEINTRESOURCEW(IDD_ADD_PROGRAM), owner_, item);
    started.set_value(GetCurrentThreadId());
    result_ = dialog.DoModal();
    DestroyWindow(owner_);
  });
  threadId_ = started.get_future().get();
  if (!WaitUntil([this] { return (window_ = FindDialog(threadId_, [](HWND) { return true; })) != nullptr; })) {
    Fail("the dialog did not appear");
  }
  Settle();
}

AddProgramDriver::~AddProgramDriver() {
  while (HWND other = OtherDialog()) {
    PostMessageW(other, WM_COMMAND, IDCANCEL, 0);
    if (!WaitUntil([other] { return !IsWindow(other); })) break;
  }
  if (IsOpen()) PostMessageW(window_, WM_COMMAND, IDCANCEL, 0);
  Join();
}

void AddProgramDriver::Join() {
  if (thread_.joinable()) thread_.join();
}

RECT AddProgramDriver::Area() const {
  RECT area{};
  GetWindowRect(window_, &area);
  return area;
}

std::wstring AddProgramDriver::Text(int id) const { return TextOf(Control(id)); }

std::vector<uint32_t> AddProgramDriver::Values(int id) const {
  std::vector<uint32_t> values;
  for (int index = 0; index < ComboBox_GetCount(Control(id)); ++index) {
    values.push_back(static_cast<uint32_t>(ComboBox_GetItemData(Control(id), index)));
  }
  return values;
}

int AddProgramDriver::SelectedIndex(int id) const { return ComboBox_GetCurSel(Control(id)); }

std::optional<std::wstring> AddProgramDriver::Selected(int id) const {
  const int index = SelectedIndex(id);
  if (index < 0) return std::nullopt;
  return Items(id).at(static_cast<size_t>(index));
}

HWND AddProgramDriver::EditOf(int id) const {
  COMBOBOXINFO info{};
  info.cbSize = sizeof(info);
  return GetComboBoxInfo(Control(id), &info) != FALSE ? info.hwndItem : Control(id);
}

int AddProgramDriver::FocusedControl() const {
  const HWND focus = FocusOf(threadId_);
  return GetDlgCtrlID(GetParent(focus) == window_ ? focus : GetParent(focus));
}

void AddProgramDriver::Type(int id, const std::wstring& text) const {
  const HWND edit = EditOf(id);
  SendMessageW(edit, EM_SETSEL, 0, -1);
  SendMessageW(edit, WM_CLEAR, 0, 0);
  for (const wchar_t character : text) SendMessageW(edit, WM_CHAR, character, 0);
}

void AddProgramDriver::Pick(int id, const std::wstring& item) const {
  const std::vector<std::wstring> items = Items(id);
  const auto found = std::ranges::find(items, item);
  if (found == items.end()) Fail("the list has no such item");
  PickIndex(id, static_cast<int>(found - items.begin()));
}

void AddProgramDriver::PickIndex(int id, int index) const {
  ComboBox_SetCurSel(Control(id), index);
  SendMessageW(window_, WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(Control(id)));
}

// The message is handled as if it had been sent, but this thread goes on.
void AddProgramDriver::Press(int button) const {
  if (!IsEnabled(button)) Fail("the button is disabled");
  SendNotifyMessageW(window_, WM_COMMAND, static_cast<WPARAM>(button), reinterpret_cast<LPARAM>(Control(button)));
  Settle();
}

void AddProgramDriver::ClickAdvanced() const { SendMessageW(Control(IDC_PROGRAM_ADVANCED_CHECK), BM_CLICK, 0, 0); }

ShownMessageBox AddProgramDriver::PressAndAnswer(int button) const {
  Press(button);
  ShownMessageBox shown = AnswerMessageBoxOf(threadId_, MessageBoxAnswer::Button(IDOK));
  Settle();
  return shown;
}

HWND AddProgramDriver::OtherDialog() const {
  return FindDialog(threadId_, [this](HWND window) { return window != window_; });
}

INT_PTR AddProgramDriver::Close(int button) {
  Press(button);
  return Result();
}

INT_PTR AddProgramDriver::Result() {
  if (!WaitUntil([this] { return !IsOpen(); })) Fail("the dialog stays open");
  Join();
  return result_;
}

void AddProgramDriver::Settle() const {
  constexpr UINT kLimitMilliseconds = 20000;
  DWORD_PTR ignored = 0;
  const bool answered = SendMessageTimeoutW(window_, WM_NULL, 0, 0, SMTO_NORMAL, kLimitMilliseconds, &ignored) != 0;
  if (!answered && IsOpen()) Fail("the dialog does not answer");
}
