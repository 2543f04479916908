#pragma once

#include "LoginProperties/ProfilePage/ProfileDataDialog.h"
#include "LoginProperties/Timeouts/TimeoutPresets.h"
#include "LoginProperties/Timeouts/TimeoutRules.h"

/// The "Timeouts" page: after what time, and with what warning, a connection is ended automatically.
class TimeoutDialog : public ProfileDataDialog {
 public:
  TimeoutDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow);

 protected:
  int SetWindowControls() override;
  int ReadWindowControls() override;

  /// Writes the choices into the current profile and checks them; tells the user what is wrong.
  int ValidateWindowControls() override;

  int OnInitDialog(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;

 private:
  void LoadTimeoutControls(Profile& shown);
  void FillLists(const Profile& edited);
  void EnableTimeoutGroup(HWND list, HWND check, int64_t value, int labelId);
  void EnableDurationGroup();
  void EnableThresholdGroup();
  void EnableWarningGroup();
  void OnThresholdClicked();
  ChosenTimeouts ReadChoices() const;
  void ShowProblem(const TimeoutProblem& problem);

  HWND warningList_ = nullptr;
  HWND durationList_ = nullptr;
  HWND periodList_ = nullptr;
  HWND bytesList_ = nullptr;
  HWND warningCheck_ = nullptr;
  HWND durationCheck_ = nullptr;
  HWND thresholdCheck_ = nullptr;
};
