#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "LoginProperties/ProfilePage/ReportList.h"
#include "LoginProperties/Proxy/ProxyEntries.h"
#include "WaylineDll/BaseDialog.h"

/// The dialog "Program Settings", in which the user edits a list of proxies, or of addresses that need none.
class SettingsDialog : public BaseDialog {
 public:
  SettingsDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow);

  /// What is to be edited: a manual proxy list, whose entries have ports, or an exception list. Before DoModal.
  void Load(const std::wstring& text, bool manual);

  /// The list as it was edited. After DoModal has returned IDOK.
  std::wstring Result() const;

 protected:
  int SetWindowControls() override;
  int ReadWindowControls() override;
  int OnInitDialog(int64_t parameter) override;
  int OnHelp(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;
  int OnNotify(uint64_t controlId, int64_t record) override;

 private:
  ProxyEntry ReadEntry() const;
  void Add();
  void Change();
  void Delete();
  void ShowSelected() const;
  void FillList() const;
  void FitColumns();

  ProxyEntries entries_;
  bool manual_ = true;
  ReportList list_;
  int columnsWidth_ = 0;
  size_t selectedRow_ = 0;  // also when the user has selected none, and when it is no longer there
};
