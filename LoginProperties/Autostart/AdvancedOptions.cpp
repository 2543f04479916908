#include "LoginProperties/Autostart/AdvancedOptions.h"

#include <algorithm>

#include "LoginProperties/Autostart/AddProgramControls.h"

namespace {

constexpr int kControls[] = {
    IDC_PROGRAM_ADVANCED_GROUP,  IDC_PROGRAM_SIZE_LABEL,  IDC_PROGRAM_SIZE,
    IDC_PROGRAM_RECONNECT_LABEL, IDC_PROGRAM_RECONNECT,   IDC_PROGRAM_CONNECTION_LABEL,
    IDC_PROGRAM_CONNECTION,      IDC_PROGRAM_DELAY_LABEL, IDC_PROGRAM_DELAY,
};

RECT AreaOf(HWND window) {
  RECT area{};
  GetWindowRect(window, &area);
  return area;
}

// What is left of the frame, in dialog units: the height of the box that unfolds it.
LONG LeftHeight(HWND dialog) {
  RECT units{0, 0, 0, 20};
  MapDialogRect(dialog, &units);
  return units.bottom;
}

}  // namespace

void AdvancedOptions::Attach(HWND dialog) {
  dialog_ = dialog;
  const RECT area = AreaOf(dialog);
  fullHeight_ = area.bottom - area.top;
  foldedHeight_ = AreaOf(GetDlgItem(dialog, IDC_PROGRAM_ADVANCED_GROUP)).top + LeftHeight(dialog) - area.top;
}

void AdvancedOptions::Show(bool show) const {
  for (const int id : kControls) ShowWindow(GetDlgItem(dialog_, id), show ? SW_SHOW : SW_HIDE);
  SetHeight(show ? fullHeight_ : foldedHeight_);
}

void AdvancedOptions::SetHeight(LONG height) const {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof(monitor);
  GetMonitorInfoW(MonitorFromWindow(dialog_, MONITOR_DEFAULTTONEAREST), &monitor);
  const RECT area = AreaOf(dialog_);
  // Above all the caption stays on the screen, by which the dialog can be moved.
  const LONG top = std::max(std::min(area.top, monitor.rcWork.bottom - height), monitor.rcWork.top);
  SetWindowPos(dialog_, nullptr, area.left, top, area.right - area.left, height, SWP_NOZORDER | SWP_NOACTIVATE);
}
