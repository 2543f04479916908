#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstddef>
#include <string>
#include <vector>

#include "LoginProperties/Proxy/ProxyControls.h"
#include "tests/support/ReportRows.h"
#include "tests/ui/SheetDriver.h"

/// The list of the page "Proxy", which is in front of a sheet.
class ProxyPageDriver {
 public:
  explicit ProxyPageDriver(SheetDriver& sheet) : sheet_(sheet) {}

  HWND List() const { return sheet_.Control(IDC_PROXY_LIST); }

  /// Type, mode and value of each setting.
  std::vector<std::vector<std::wstring>> Rows() const { return ReportRows(List()); }

  /// Selects a row, as the arrow keys do; a disabled list takes none.
  void Select(size_t row) const {
    if (!sheet_.IsEnabled(IDC_PROXY_LIST)) return;
    constexpr UINT kChosen = LVIS_SELECTED | LVIS_FOCUSED;
    ListView_SetItemState(List(), static_cast<int>(row), kChosen, kChosen);
  }

  /// The row that is seen to be selected; -1 when none is.
  int SelectedRow() const { return ListView_GetNextItem(List(), -1, LVNI_SELECTED); }

  bool IsShown(int id) const { return IsWindowVisible(sheet_.Control(id)) != FALSE; }

  /// The checked radio button; 0 when none is.
  int CheckedMode() const {
    for (const int id : {IDC_PROXY_AUTOMATIC_RADIO, IDC_PROXY_NOT_UPDATED_RADIO, IDC_PROXY_MANUAL_RADIO}) {
      if (sheet_.IsChecked(id)) return id;
    }
    return 0;
  }

  /// Types over the URL.
  void TypeUrl(const std::wstring& url) const {
    sheet_.Focus(IDC_PROXY_URL);
    sheet_.Type(url);
  }

 private:
  SheetDriver& sheet_;
};
