#pragma once

#include "WaylineDll/SetupWizard/WizardPageDialog.h"

/// The page with the network services. A service that is not among them is kept as long as the user leaves the list
/// alone.
class ServicePage : public WizardPageDialog {
 public:
  explicit ServicePage(WizardRun& run) : WizardPageDialog(run, WizardPage::Service) {}

 protected:
  std::vector<int> GetFields() const override;
  Verdict Judge(int field, const std::wstring& text) const override;
  int SetWindowControls() override;
  int ReadWindowControls() override;
  int OnInitDialog(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;

 private:
  bool touched_ = false;
};
