#pragma once

#include <optional>
#include <string>
#include <vector>

#include "WaylineDll/PropPageDialog.h"
#include "WaylineDll/SetupWizard/WizardRun.h"

/// Base of the wizards' pages. A page shows the draft in SetWindowControls, whenever it comes to the front, and takes
/// its controls into the draft in ReadWindowControls, in whichever direction it is left. Its fields are checked when
/// they or the page are left, but not to cancel or to go back.
class WizardPageDialog : public PropPageDialog {
 public:
  WizardPageDialog(WizardRun& run, WizardPage page);

  WizardPage GetPage() const { return page_; }

 protected:
  /// What is to be said of a field's content.
  struct Verdict {
    std::wstring accepted = {};     // what the field is to show
    unsigned message = 0;           // number of the string that says what is expected; 0 when the content will do
    std::wstring messageItem = {};  // for the "%1" in it
  };

  /// Ids of the fields that are checked, in their order.
  virtual std::vector<int> GetFields() const { return {}; }

  /// Judges a field by its text without the blanks around it. What was stored before is not judged anew: who does not
  /// touch it must not be kept from going on.
  virtual Verdict Judge(int /*field*/, const std::wstring& text) const { return Verdict{.accepted = text}; }

  /// Whether a control is about the same as a field, so that who goes there has not left the field.
  virtual bool BelongTogether(int /*field*/, int /*control*/) const { return false; }

  int OnInitDialog(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;
  int OnNotify(uint64_t controlId, int64_t record) override;
  int OnMsg(uint32_t message, uint64_t wordParameter, int64_t longParameter) override;

  /// Tells the user of the first field that cannot stand.
  int ValidateWindowControls() override;

  WizardRun& Run() const { return run_; }
  WizardDraft& Draft() const { return run_.Draft(); }

  HWND Control(int id) const { return GetDlgItem(GetWindow(), id); }

  /// The text of a control without the blanks around it.
  std::wstring Text(int id) const;

 private:
  HWND Sheet() const { return GetParent(GetWindow()); }
  int OnActivated();
  int OnNext();
  int OnBack();
  int OnFinish();
  void OnFieldLeft(int field);
  bool IsLeaving(int field) const;
  bool CheckField(int field);
  void Tell(int field, const Verdict& verdict);

  WizardRun& run_;
  WizardPage page_;
  int leftField_ = 0;     // the field that lost the focus and is still to be checked
  bool telling_ = false;  // a message about a field is shown; the focus passes others on its way there and back
};
