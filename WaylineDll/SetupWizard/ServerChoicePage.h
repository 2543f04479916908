#pragma once

#include "WaylineDll/SetupWizard/WizardPageDialog.h"

/// The page that asks whether a new profile has servers of its own.
class ServerChoicePage : public WizardPageDialog {
 public:
  explicit ServerChoicePage(WizardRun& run) : WizardPageDialog(run, WizardPage::ServerChoice) {}

 protected:
  int SetWindowControls() override;
  int ReadWindowControls() override;
};
