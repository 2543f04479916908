#pragma once

#include "WaylineDll/SetupWizard/WizardPageDialog.h"

/// The page with the account and the user ID.
class UserIdPage : public WizardPageDialog {
 public:
  explicit UserIdPage(WizardRun& run) : WizardPageDialog(run, WizardPage::UserId) {}

 protected:
  std::vector<int> GetFields() const override;
  Verdict Judge(int field, const std::wstring& text) const override;
  int SetWindowControls() override;
  int ReadWindowControls() override;
};
