#pragma once

#include "LoginProperties/ProfilePage/ProfileDataDialog.h"

/// The "Preferences" page: the client's preferences of a profile, as a tree.
class PreferenceDialog : public ProfileDataDialog {
 public:
  using ProfileDataDialog::ProfileDataDialog;

 protected:
  int SetWindowControls() override;
  int OnInitDialog(int64_t parameter) override;
  int OnHelp(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;
  int OnNotify(uint64_t controlId, int64_t record) override;
};
