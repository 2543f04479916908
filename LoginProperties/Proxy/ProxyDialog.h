#pragma once

#include <map>
#include <memory>

#include "LoginProperties/ProfilePage/ProfileDataDialog.h"
#include "LoginProperties/ProfilePage/ReportList.h"
#include "LoginProperties/Proxy/ProxyRules.h"

/// The "Proxy" page: which proxy settings are handed to Windows with a connection. Modes are written into the current
/// profile at once, lists when their dialog is confirmed, the URL when the page is left with it in view.
class ProxyDialog : public ProfileDataDialog {
 public:
  ProxyDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow);

 protected:
  int SetWindowControls() override;
  int ReadWindowControls() override;

  /// Stores the URL if the user can have typed one. There is nothing that could be wrong with it.
  int ValidateWindowControls() override;

  int OnInitDialog(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;
  int OnNotify(uint64_t controlId, int64_t record) override;

 private:
  void AddColumns() const;
  void RestoreModes(bool overrides);
  void FillList() const;
  void ShowSetting() const;
  void CheckMode(wchar_t mode) const;
  void OnModeChosen();
  void EditList();
  wchar_t SelectedMode() const;
  static std::shared_ptr<ConfigSetting> ConfigOf(wchar_t mode);

  ReportList list_;
  ProxySetting selected_ = ProxySetting::AutoUrl;

  // The modes of each profile when the page showed it first: those that it goes back to with its defaults.
  std::map<std::shared_ptr<Profile>, ProxyModes> firstModes_;
};
