#pragma once

#include "LoginProperties/ProfilePage/ProfileDataDialog.h"
#include "WaylineDll/SetupWizard.h"

/// The "General" page: the profile that all pages work on, its account and its servers.
class GeneralDialog : public ProfileDataDialog {
 public:
  GeneralDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow);

 protected:
  int SetWindowControls() override;
  int OnInitDialog(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;

 private:
  void Rename();
  void Remove();
  void ConfigureNetwork();
  void ConfigureServers();
  void AddNew();
  bool RunWizard(WizardId wizard, SetupWizardData_t& data) const;
};
