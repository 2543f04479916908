#include "tests/ui/DialogWindows.h"

#include <commctrl.h>
#include <prsht.h>

#include <ranges>
#include <stdexcept>

#include "tests/support/WaitUntil.h"
#include "tests/ui/Screenshot.h"

namespace {

// How often a key is pressed that had no effect, and how long that is waited for.
constexpr int kTries = 5;
constexpr auto kPatience = std::chrono::seconds(3);

bool IsDialog(HWND window) {
  wchar_t name[16] = {};
  GetClassNameW(window, name, ARRAYSIZE(name));
  return wcscmp(name, L"#32770") == 0;
}

}  // namespace

std::wstring TextOf(HWND window) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

HWND FindDialog(DWORD threadId, const std::function<bool(HWND)>& wanted) {
  struct Search {
    const std::function<bool(HWND)>& wanted;
    HWND found;
  } search{wanted, nullptr};
  EnumThreadWindows(
      threadId,
      [](HWND window, LPARAM parameter) -> BOOL {
        auto& state = *reinterpret_cast<Search*>(parameter);
        if (!IsWindowVisible(window) || !IsDialog(window) || !state.wanted(window)) return TRUE;
        state.found = window;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&search));
  return search.found;
}

bool IsSheet(HWND dialog) { return PropSheet_GetTabControl(dialog) != nullptr; }

bool IsWizard(HWND dialog) {
  constexpr int kBackButton = 0x3023;
  return IsSheet(dialog) && IsWindowVisible(GetDlgItem(dialog, kBackButton)) != FALSE;
}

std::wstring TextOfMessageBox(HWND box) {
  constexpr int kMessageBoxText = 0xffff;
  return TextOf(GetDlgItem(box, kMessageBoxText));
}

bool CloseMessageBox(HWND box, int button) {
  SendNotifyMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
  return WaitUntil([box] { return !IsWindow(box); });
}

HWND FocusOf(DWORD threadId) {
  GUITHREADINFO info{};
  info.cbSize = sizeof(info);
  GetGUIThreadInfo(threadId, &info);
  return info.hwndFocus;
}

void SendKey(WORD key, const std::vector<WORD>& modifiers) {
  std::vector<INPUT> inputs;
  const auto add = [&inputs](WORD virtualKey, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = virtualKey;
    input.ki.dwFlags = flags;
    inputs.push_back(input);
  };
  for (const WORD modifier : modifiers) add(modifier, 0);
  add(key, 0);
  add(key, KEYEVENTF_KEYUP);
  for (const WORD modifier : std::views::reverse(modifiers)) add(modifier, KEYEVENTF_KEYUP);
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

// Each event carries its place: under load the screen still reports where the pointer was before, and a click would
// land there.
void SendClick(POINT point, int times) {
  const auto whole = [](LONG place, int size) { return static_cast<LONG>((place * 65536LL + 32768) / size); };
  std::vector<INPUT> inputs;
  const auto add = [&](DWORD button) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = whole(point.x, GetSystemMetrics(SM_CXSCREEN));
    input.mi.dy = whole(point.y, GetSystemMetrics(SM_CYSCREEN));
    input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE | button;
    inputs.push_back(input);
  };
  add(0);
  for (int time = 0; time < times; ++time) {
    add(MOUSEEVENTF_LEFTDOWN);
    add(MOUSEEVENTF_LEFTUP);
  }
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

void BringToForeground(HWND window) {
  const auto isInForeground = [window] {
    if (GetForegroundWindow() == window) return true;
    SetForegroundWindow(window);
    return false;
  };
  if (!WaitUntil(isInForeground)) Fail("the window does not come to the foreground");
}

bool PressKeyUntil(HWND window, const std::function<bool()>& effect, WORD key, const std::vector<WORD>& modifiers) {
  for (int tries = 0; tries < kTries; ++tries) {
    BringToForeground(window);
    SendKey(key, modifiers);
    if (WaitUntil(effect, kPatience)) return true;
  }
  return false;
}

void Fail(const char* what) {
  TakeScreenshot();
  throw std::runtime_error(what);
}
