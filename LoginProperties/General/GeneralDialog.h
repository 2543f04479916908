#pragma once

#include "LoginProperties/ProfilePage/ProfileDataDialog.h"

/// The "General" page: the profile that all pages work on, its account and its servers.
class GeneralDialog : public ProfileDataDialog {
 public:
  GeneralDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow);

 protected:
  int OnInitDialog(int64_t parameter) override;
};
