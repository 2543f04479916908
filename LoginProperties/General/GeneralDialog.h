#pragma once

#include "LoginProperties/ProfilePage/ProfileDataDialog.h"

/// The "General" page: the profile that all pages work on, its account and its servers.
class GeneralDialog : public ProfileDataDialog {
 public:
  using ProfileDataDialog::ProfileDataDialog;

 protected:
  int OnInitDialog(int64_t parameter) override;
  int OnHelp(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;
  int OnNotify(uint64_t controlId, int64_t record) override;
};
