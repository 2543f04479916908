#pragma once

#include "WaylineDll/SetupWizard/WizardPageDialog.h"

/// The page with the name of a new profile.
class NamePage : public WizardPageDialog {
 public:
  explicit NamePage(WizardRun& run) : WizardPageDialog(run, WizardPage::Name) {}

 protected:
  std::vector<int> GetFields() const override;
  Verdict Judge(int field, const std::wstring& text) const override;
  int SetWindowControls() override;
  int ReadWindowControls() override;
};
