#pragma once

#include "WaylineDll/SetupWizard/WizardPageDialog.h"

/// The last page for a new profile: what will be made.
class SummaryPage : public WizardPageDialog {
 public:
  explicit SummaryPage(WizardRun& run) : WizardPageDialog(run, WizardPage::Summary) {}

 protected:
  int SetWindowControls() override;
  int OnInitDialog(int64_t parameter) override;
};
