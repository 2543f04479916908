#pragma once

#include "LoginProperties/ProfilePage/ProfileDataDialog.h"

/// The "Wi-Fi Switching" page: how the client reconnects and switches to hotspots.
class AutoReconnectDialog : public ProfileDataDialog {
 public:
  using ProfileDataDialog::ProfileDataDialog;

 protected:
  int SetWindowControls() override;
  int OnHelp(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;
  int OnNotify(uint64_t controlId, int64_t record) override;
};
