#include "WaylineDll/Appearance.h"

#include <algorithm>

#include "NetUtilities/Module/Owner.h"

namespace {

RECT WorkAreaOf(HWND window) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof(monitor);
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
  return monitor.rcWork;
}

// Start of a span of `length` that is centred over [begin, end) and kept within the limits, where it fits.
LONG Centre(LONG begin, LONG end, LONG length, LONG lowest, LONG highest) {
  return std::max(lowest, std::min((begin + end - length) / 2, highest - length));
}

HFONT CreateProportionalFont() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof(metrics);
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
  return CreateFontIndirectW(&metrics.lfMessageFont);
}

}  // namespace

void CenterWindow(HWND window, HWND reference) {
  const RECT work = WorkAreaOf(reference != nullptr ? reference : window);
  RECT over = work;
  if (reference != nullptr) GetWindowRect(reference, &over);
  RECT own{};
  GetWindowRect(window, &own);
  const LONG left = Centre(over.left, over.right, own.right - own.left, work.left, work.right);
  const LONG top = Centre(over.top, over.bottom, own.bottom - own.top, work.top, work.bottom);
  SetWindowPos(window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

HFONT GetProportionalFont() {
  static const Owner<HFONT, DeleteObject> font(CreateProportionalFont());
  return font.get();
}
