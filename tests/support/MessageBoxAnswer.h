#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

/// A message box as it stood on the screen.
struct ShownMessageBox {
  std::wstring title;
  std::wstring text;
  HICON icon = nullptr;
  HWND owner = nullptr;
  bool ownerEnabled = false;
  std::vector<int> buttons;  // their ids, in tab order
};

/// How a user closes a message box.
struct MessageBoxAnswer {
  static MessageBoxAnswer Button(int id) { return {id}; }
  static MessageBoxAnswer Escape() { return {0}; }
  int button;
};

/// Calls `show`, which is to show one message box and return when it is closed; answers it from another
/// thread. The test fails when no message box comes.
ShownMessageBox AnswerMessageBox(MessageBoxAnswer answer, const std::function<void()>& show);

/// Waits for the message box of a thread, of this program or another one; false when none comes.
bool WaitForMessageBoxOf(DWORD threadId);

/// Waits for the message box of a thread, of this program or another one, answers it and waits until it is gone. The
/// test fails when none comes or it stays.
ShownMessageBox AnswerMessageBoxOf(DWORD threadId, MessageBoxAnswer answer);
