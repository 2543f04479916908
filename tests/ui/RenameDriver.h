#pragma once

#include <windows.h>

#include <string>

#include "LoginProperties/General/GeneralControls.h"
#include "LoginProperties/General/RenameProfileControls.h"
#include "tests/ui/ModalDriver.h"

/// The dialog "Rename Profile" over a sheet, as a person in front of it sees and uses it.
class RenameDriver : public ModalDriver {
 public:
  /// Presses the button "Rename" of the sheet's page and waits for the dialog.
  explicit RenameDriver(SheetDriver& sheet) : ModalDriver(sheet, IDC_GENERAL_RENAME) {}

  /// What the field holds.
  std::wstring Name() const { return Text(IDC_RENAME_NAME); }

  HWND Field() const { return Control(IDC_RENAME_NAME); }

  /// Types over what the field holds.
  void Type(const std::wstring& name) const { ModalDriver::Type(IDC_RENAME_NAME, name); }

  /// Gives the profile another name.
  void Rename(const std::wstring& name) const {
    Type(name);
    Close(IDOK);
  }
};
