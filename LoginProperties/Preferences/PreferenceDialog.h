#pragma once

#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <type_traits>

#include "LoginProperties/Preferences/PreferenceRules.h"
#include "LoginProperties/Preferences/PreferenceTree.h"
#include "LoginProperties/Preferences/TreeInputFilter.h"
#include "LoginProperties/ProfilePage/ProfileDataDialog.h"

/// The "Preferences" page: the client's preferences of a profile, as a tree.
class PreferenceDialog : public ProfileDataDialog {
 public:
  /// As the base; whether the current profile has a saved certificate is asked now.
  PreferenceDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow);

 protected:
  int SetWindowControls() override;
  int ReadWindowControls() override;
  int OnInitDialog(int64_t parameter) override;
  int OnHelp(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;
  int OnNotify(uint64_t controlId, int64_t record) override;
  int OnMsg(uint32_t message, uint64_t wordParameter, int64_t longParameter) override;

 private:
  void FillTree(const TreeConditions& conditions);
  HTREEITEM AddGroup(const PreferenceGroup& group);
  void AddEntry(HTREEITEM group, const PreferenceEntry& entry, int32_t state);
  void ToggleItem(HTREEITEM item);

  struct DestroyImages {
    void operator()(HIMAGELIST images) const { ImageList_Destroy(images); }
  };

  PreferenceTree description_;
  HWND tree_ = nullptr;
  std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, DestroyImages> stateImages_;
  TreeInputFilter inputFilter_;
};
