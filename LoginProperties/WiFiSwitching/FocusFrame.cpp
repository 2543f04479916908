#include "LoginProperties/WiFiSwitching/FocusFrame.h"

#include <commctrl.h>

namespace {

constexpr UINT_PTR kSubclassId = 1;

bool ShowsFocus(HWND checkBox) {
  return GetFocus() == checkBox && (SendMessageW(checkBox, WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS) == 0;
}

void DrawFrame(HWND checkBox) {
  RECT frame{};
  GetClientRect(checkBox, &frame);
  const HDC context = GetDC(checkBox);
  DrawFocusRect(context, &frame);
  ReleaseDC(checkBox, context);
}

LRESULT CALLBACK Procedure(HWND checkBox, UINT message, WPARAM wordParameter, LPARAM longParameter, UINT_PTR id,
                           DWORD_PTR /*data*/) {
  switch (message) {
    case WM_PAINT: {
      const bool focus = ShowsFocus(checkBox);
      // A second frame over the first would take it away: everything is drawn anew.
      if (focus) InvalidateRect(checkBox, nullptr, TRUE);
      const LRESULT result = DefSubclassProc(checkBox, message, wordParameter, longParameter);
      if (focus) DrawFrame(checkBox);
      return result;
    }
    case WM_SETFOCUS:
    case WM_KILLFOCUS: {
      const LRESULT result = DefSubclassProc(checkBox, message, wordParameter, longParameter);
      InvalidateRect(checkBox, nullptr, TRUE);
      return result;
    }
    case WM_NCDESTROY:
      RemoveWindowSubclass(checkBox, Procedure, id);
      break;
    default:
      break;
  }
  return DefSubclassProc(checkBox, message, wordParameter, longParameter);
}

}  // namespace

void ShowFocusOf(HWND checkBox) { SetWindowSubclass(checkBox, Procedure, kSubclassId, 0); }
