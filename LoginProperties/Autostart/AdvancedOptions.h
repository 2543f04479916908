#pragma once

#include <windows.h>

/// The lower part of the dialog in which an entry is edited. It can be folded away, and the dialog is lower then.
class AdvancedOptions {
 public:
  /// The dialog, in its full height.
  void Attach(HWND dialog);

  /// The dialog keeps its place, but never grows beyond the screen.
  void Show(bool show) const;

 private:
  void SetHeight(LONG height) const;

  HWND dialog_ = nullptr;
  LONG fullHeight_ = 0;
  LONG foldedHeight_ = 0;
};
