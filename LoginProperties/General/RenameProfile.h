#pragma once

#include <string>

#include "WaylineDll/BaseDialog.h"

/// The dialog that asks for a new name of a profile. It takes any text but none.
class RenameProfile : public BaseDialog {
 public:
  RenameProfile(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow, std::wstring name);

  /// What was entered; empty until OK was pressed.
  std::wstring GetNewName() const { return newName; }

 protected:
  int ReadWindowControls() override;
  int OnInitDialog(int64_t parameter) override;

  std::wstring newName;
  std::wstring currentName;
};
