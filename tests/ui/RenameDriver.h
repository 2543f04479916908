#pragma once

#include <windows.h>

#include <string>

#include "tests/ui/SheetDriver.h"

/// The dialog "Rename Profile" over a sheet, as a person in front of it sees and uses it.
class RenameDriver {
 public:
  /// Presses the button "Rename" of the sheet's page and waits for the dialog.
  explicit RenameDriver(SheetDriver& sheet);

  /// Whether it has not been closed.
  bool IsOpen() const { return IsWindowVisible(window_) != FALSE; }

  std::wstring Title() const;

  /// What the field holds.
  std::wstring Name() const;

  HWND Field() const;

  /// Types over what the field holds.
  void Type(const std::wstring& name) const;

  /// Presses a button that may keep the dialog open.
  void Press(int button) const { SendMessageW(window_, WM_COMMAND, static_cast<WPARAM>(button), 0); }

  /// Presses a button that closes the dialog, and waits until the page has gone on.
  void Close(int button) const;

  /// Gives the profile another name.
  void Rename(const std::wstring& name) const {
    Type(name);
    Close(IDOK);
  }

 private:
  SheetDriver& sheet_;
  HWND window_ = nullptr;
};
