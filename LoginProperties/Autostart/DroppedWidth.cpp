#include "LoginProperties/Autostart/DroppedWidth.h"

#include <windowsx.h>

#include <algorithm>
#include <string>

namespace {

// Measures text in the font of a window.
class TextMeasure {
 public:
  explicit TextMeasure(HWND window)
      : window_(window), context_(GetDC(window)), before_(SelectFont(context_, GetWindowFont(window))) {}
  ~TextMeasure() {
    SelectFont(context_, before_);
    ReleaseDC(window_, context_);
  }
  TextMeasure(const TextMeasure&) = delete;
  TextMeasure& operator=(const TextMeasure&) = delete;

  int WidthOf(const std::wstring& text) const {
    SIZE size{};
    GetTextExtentPoint32W(context_, text.c_str(), static_cast<int>(text.size()), &size);
    return size.cx;
  }

 private:
  HWND window_;
  HDC context_;
  HFONT before_;
};

std::wstring ItemText(HWND combo, int index) {
  std::wstring text(static_cast<size_t>(ComboBox_GetLBTextLen(combo, index)), L'\0');
  ComboBox_GetLBText(combo, index, text.data());
  return text;
}

int ScreenWidth(HWND window) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof(monitor);
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
  return monitor.rcWork.right - monitor.rcWork.left;
}

}  // namespace

void FitDroppedWidth(HWND combo) {
  const TextMeasure measure(combo);
  int widest = 0;
  for (int index = 0; index < ComboBox_GetCount(combo); ++index) {
    widest = std::max(widest, measure.WidthOf(ItemText(combo, index)));
  }
  const int around = GetSystemMetrics(SM_CXVSCROLL) + 4 * GetSystemMetrics(SM_CXEDGE);
  const int width = std::min(widest + around, ScreenWidth(combo));
  SendMessageW(combo, CB_SETDROPPEDWIDTH, static_cast<WPARAM>(width), 0);
}
