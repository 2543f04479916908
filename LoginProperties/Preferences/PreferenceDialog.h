#pragma once

#include <windows.h>

#include <commctrl.h>

#include "LoginProperties/Preferences/PreferenceRules.h"
#include "LoginProperties/Preferences/PreferenceTree.h"
#include "LoginProperties/Preferences/TreeInputFilter.h"
#include "LoginProperties/ProfilePage/ProfileDataDialog.h"
#include "LoginProperties/ProfilePage/StateImageTree.h"

/// The "Preferences" page: the client's preferences of a profile, as a tree.
class PreferenceDialog : public ProfileDataDialog {
 public:
  /// As the base; whether the current profile has a saved certificate is asked now.
  PreferenceDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow);

 protected:
  int SetWindowControls() override;
  int ReadWindowControls() override;
  int OnInitDialog(int64_t parameter) override;
  int OnMsg(uint32_t message, uint64_t wordParameter, int64_t longParameter) override;

 private:
  void FillTree(const TreeConditions& conditions);
  HTREEITEM AddGroup(const PreferenceGroup& group);
  void AddEntry(HTREEITEM group, const PreferenceEntry& entry, int32_t state);
  PreferenceId IdOf(HTREEITEM item) const;
  void ToggleItem(HTREEITEM item);

  const bool hasSavedCertificate_;
  PreferenceTree description_;  // as it is shown
  StateImageTree tree_;
  TreeInputFilter inputFilter_;
};
