#pragma once

#include "LoginProperties/ProfilePage/ProfileDataDialog.h"

/// The "Autostart" page: the programs that are started around a connection.
class AutostartDialog : public ProfileDataDialog {
 public:
  AutostartDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow);

 protected:
  int SetWindowControls() override;
  int OnInitDialog(int64_t parameter) override;
};
