#pragma once

#include "WaylineDll/SetupWizard/WizardPageDialog.h"

/// The page that asks from which profile to copy, and shows what that would copy.
class CopyPage : public WizardPageDialog {
 public:
  explicit CopyPage(WizardRun& run) : WizardPageDialog(run, WizardPage::Copy) {}

 protected:
  int SetWindowControls() override;
  int ReadWindowControls() override;
  int OnInitDialog(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;

 private:
  uint32_t ChosenSource() const;
  void ShowCopied();
};
