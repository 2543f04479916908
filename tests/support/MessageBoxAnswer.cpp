#include "tests/support/MessageBoxAnswer.h"

#include <gtest/gtest.h>

#include <future>

#include "tests/support/WaitUntil.h"

namespace {

constexpr int kText = 0xffff;  // id of the static text in a message box

std::wstring TextOf(HWND window) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

bool IsOfClass(HWND window, const wchar_t* name) {
  wchar_t own[16] = {};
  GetClassNameW(window, own, ARRAYSIZE(own));
  return wcscmp(own, name) == 0;
}

HWND FindMessageBox(DWORD threadId) {
  HWND found = nullptr;
  EnumThreadWindows(
      threadId,
      [](HWND window, LPARAM result) -> BOOL {
        if (!IsWindowVisible(window) || !IsOfClass(window, L"#32770") || GetDlgItem(window, kText) == nullptr)
          return TRUE;
        *reinterpret_cast<HWND*>(result) = window;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&found));
  return found;
}

ShownMessageBox Describe(HWND box) {
  ShownMessageBox shown;
  shown.title = TextOf(box);
  shown.text = TextOf(GetDlgItem(box, kText));
  shown.owner = GetWindow(box, GW_OWNER);
  shown.ownerEnabled = IsWindowEnabled(shown.owner) != FALSE;
  for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    const LONG style = GetWindowLongW(child, GWL_STYLE);
    if ((style & WS_VISIBLE) == 0) continue;
    if (IsOfClass(child, L"Button")) shown.buttons.push_back(GetDlgCtrlID(child));
    if (IsOfClass(child, L"Static") && (style & SS_TYPEMASK) == SS_ICON) {
      shown.icon = reinterpret_cast<HICON>(SendMessageW(child, STM_GETICON, 0, 0));
    }
  }
  return shown;
}

void Give(MessageBoxAnswer answer, HWND box) {
  if (answer.button != 0) {
    PostMessageW(GetDlgItem(box, answer.button), BM_CLICK, 0, 0);
  } else {
    PostMessageW(box, WM_KEYDOWN, VK_ESCAPE, 0);
  }
}

}  // namespace

bool WaitForMessageBoxOf(DWORD threadId) {
  return WaitUntil([threadId] { return FindMessageBox(threadId) != nullptr; });
}

ShownMessageBox AnswerMessageBoxOf(DWORD threadId, MessageBoxAnswer answer) {
  HWND box = nullptr;
  if (!WaitUntil([&] { return (box = FindMessageBox(threadId)) != nullptr; })) {
    ADD_FAILURE() << "No message box was shown.";
    return {};
  }
  ShownMessageBox shown = Describe(box);
  Give(answer, box);
  EXPECT_TRUE(WaitUntil([box] { return IsWindow(box) == FALSE; })) << "The message box stays open.";
  return shown;
}

ShownMessageBox AnswerMessageBox(MessageBoxAnswer answer, const std::function<void()>& show) {
  auto user = std::async(std::launch::async, [answer, thread = GetCurrentThreadId()] {
    HWND box = nullptr;
    if (!WaitUntil([&] { return (box = FindMessageBox(thread)) != nullptr; })) return ShownMessageBox();
    ShownMessageBox shown = Describe(box);
    Give(answer, box);
    return shown;
  });
  show();
  ShownMessageBox shown = user.get();
  EXPECT_FALSE(shown.title.empty()) << "No message box was shown.";
  return shown;
}
