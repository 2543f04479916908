#pragma once

#include <windows.h>

#include <windowsx.h>

/// While it lives, changes of a window are not drawn; in the end all of it is drawn anew.
class FrozenDrawing {
 public:
  explicit FrozenDrawing(HWND window) : window_(window) { SetWindowRedraw(window, FALSE); }
  ~FrozenDrawing() {
    SetWindowRedraw(window_, TRUE);
    InvalidateRect(window_, nullptr, TRUE);
  }
  FrozenDrawing(const FrozenDrawing&) = delete;
  FrozenDrawing& operator=(const FrozenDrawing&) = delete;

 private:
  HWND window_;
};
