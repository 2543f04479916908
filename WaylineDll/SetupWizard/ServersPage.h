#pragma once

#include <span>

#include "WaylineDll/SetupWizard/WizardPageDialog.h"

/// A page with some of the server settings. A value can be entered where its mode asks for one.
class ServersPage : public WizardPageDialog {
 public:
  /// `page` is WizardPage::Servers or WizardPage::Domains.
  ServersPage(WizardRun& run, WizardPage page);

 protected:
  std::vector<int> GetFields() const override;
  Verdict Judge(int field, const std::wstring& text) const override;
  bool BelongTogether(int field, int control) const override;
  int SetWindowControls() override;
  int ReadWindowControls() override;
  int OnInitDialog(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;

 private:
  struct Row {
    ServerField field;
    int mode;   // id of the list of modes
    int label;  // ids of the value's label and field
    int value;
    unsigned expected;  // string that says what is expected of the value
  };

  static std::span<const Row> RowsOf(WizardPage page);
  void EnableValue(const Row& row);

  std::span<const Row> rows_;
};
