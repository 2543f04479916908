#pragma once

#include "LoginProperties/ProfilePage/ProfileDataDialog.h"

/// The "Wi-Fi Switching" page: how the client reconnects and switches to hotspots. What the user does is written into
/// the current profile at once, except for what is typed: that is written when its field or the page is left.
class AutoReconnectDialog : public ProfileDataDialog {
 public:
  AutoReconnectDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow);

 protected:
  int SetWindowControls() override;
  int ReadWindowControls() override;

  /// Stores what is typed, then checks the current profile's signal strength; tells the user when it cannot stand.
  int ValidateWindowControls() override;

  int OnInitDialog(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;
  int OnNotify(uint64_t controlId, int64_t record) override;

 private:
  void ShowReconnectValues(const Profile& profile);
  void EnableReconnectControls();
  int OnSwitchClicked(int id, void (Profile::*store)(bool));
  int OnPromptClicked();
  int OnFieldLeft(int id);
  void StoreFields();
  int OnLostConnectionChosen(int id, int32_t settings);

  // Set once the sheet has asked the page to give way, until a validation fails. While it is set, a field that loses
  // the focus is not validated at once.
  bool leaving_ = false;

  // The sheet is being cancelled: it takes the focus away, and what is typed is given up.
  bool cancelled_ = false;
};
