#pragma once

#include "LoginProperties/ProfilePage/ProfileDataDialog.h"

/// The "Autostart" page: the programs that are started around a connection.
class AutostartDialog : public ProfileDataDialog {
 public:
  using ProfileDataDialog::ProfileDataDialog;

 protected:
  int SetWindowControls() override;
  int OnInitDialog(int64_t parameter) override;
  int OnHelp(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;
  int OnNotify(uint64_t controlId, int64_t record) override;
};
