#pragma once

#include "WaylineDll/SetupWizard/WizardPageDialog.h"

/// The page with the defaults that a new profile can follow.
class DefaultsPage : public WizardPageDialog {
 public:
  explicit DefaultsPage(WizardRun& run) : WizardPageDialog(run, WizardPage::Defaults) {}

 protected:
  std::vector<int> GetFields() const override;
  Verdict Judge(int field, const std::wstring& text) const override;
  int SetWindowControls() override;
  int ReadWindowControls() override;
  int OnInitDialog(int64_t parameter) override;
};
