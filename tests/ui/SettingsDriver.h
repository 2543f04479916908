#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstddef>
#include <string>
#include <vector>

#include "LoginProperties/Proxy/ProxyControls.h"
#include "LoginProperties/Proxy/SettingsControls.h"
#include "tests/support/ReportRows.h"
#include "tests/ui/ModalDriver.h"

/// The dialog "Program Settings" over a sheet, as a person in front of it sees and uses it.
class SettingsDriver : public ModalDriver {
 public:
  /// Presses the button "Settings..." of the sheet's page and waits for the dialog.
  explicit SettingsDriver(SheetDriver& sheet) : ModalDriver(sheet, IDC_PROXY_SETTINGS) {}

  HWND List() const { return Control(IDC_SETTINGS_LIST); }

  /// Address and port of each entry.
  std::vector<std::vector<std::wstring>> Entries() const { return ReportRows(List()); }

  void Select(size_t row) const {
    constexpr UINT kChosen = LVIS_SELECTED | LVIS_FOCUSED;
    ListView_SetItemState(List(), static_cast<int>(row), kChosen, kChosen);
  }

  std::wstring Address() const { return Text(IDC_SETTINGS_ADDRESS); }
  std::wstring Port() const { return Text(IDC_SETTINGS_PORT); }

  /// Types over what the two fields hold.
  void Type(const std::wstring& address, const std::wstring& port) const {
    ModalDriver::Type(IDC_SETTINGS_ADDRESS, address);
    ModalDriver::Type(IDC_SETTINGS_PORT, port);
  }

  void Add(const std::wstring& address, const std::wstring& port = L"") const {
    Type(address, port);
    Press(IDC_SETTINGS_ADD);
  }
};
