#pragma once

#include "LoginProperties/ProfilePage/ProfileDataDialog.h"

/// The "Proxy" page: which proxy settings are handed to Windows with a connection.
class ProxyDialog : public ProfileDataDialog {
 public:
  ProxyDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow);

 protected:
  int SetWindowControls() override;
  int OnInitDialog(int64_t parameter) override;
};
