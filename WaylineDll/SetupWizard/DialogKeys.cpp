#include "WaylineDll/SetupWizard/DialogKeys.h"

#include <commctrl.h>

namespace {

constexpr UINT_PTR kSubclass = 2;

LRESULT CALLBACK KeysProc(HWND edit, UINT message, WPARAM wordParameter, LPARAM longParameter, UINT_PTR, DWORD_PTR) {
  if (message == WM_GETDLGCODE) return DLGC_WANTARROWS | DLGC_WANTCHARS;
  if (message == WM_NCDESTROY) RemoveWindowSubclass(edit, KeysProc, kSubclass);
  return DefSubclassProc(edit, message, wordParameter, longParameter);
}

}  // namespace

void LeaveKeysToDialog(HWND edit) { SetWindowSubclass(edit, KeysProc, kSubclass, 0); }
