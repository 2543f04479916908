#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/ui/SheetDriver.h"

/// A dialog over a sheet, as a person in front of it sees and uses it. Controls are named by their ids.
class ModalDriver {
 public:
  /// Presses a button of the sheet's page and waits for the dialog that it brings up.
  ModalDriver(SheetDriver& sheet, int button);

  HWND Window() const { return window_; }

  /// Whether it has not been closed.
  bool IsOpen() const { return IsWindowVisible(window_) != FALSE; }

  std::wstring Title() const;

  HWND Control(int id) const { return GetDlgItem(window_, id); }

  /// What a field holds, or a label says.
  std::wstring Text(int id) const;

  /// Types over what a field holds.
  void Type(int id, const std::wstring& text) const;

  /// Presses a key with real input, as PressKeyUntil of DialogWindows.h does.
  bool PressKeyUntil(const std::function<bool()>& effect, WORD key, const std::vector<WORD>& modifiers = {}) const;

  /// Presses a button that may keep the dialog open.
  void Press(int button) const { SendMessageW(window_, WM_COMMAND, static_cast<WPARAM>(button), 0); }

  /// Presses a button that closes the dialog, and waits until the page has gone on.
  void Close(int button) const;

  /// Waits until the dialog is closed and the page has gone on.
  void ExpectEnd() const;

 private:
  SheetDriver& sheet_;
  HWND window_ = nullptr;
};
