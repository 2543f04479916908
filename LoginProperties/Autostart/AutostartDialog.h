#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "LoginProperties/Autostart/AutostartOrder.h"
#include "LoginProperties/ProfilePage/ProfileDataDialog.h"
#include "LoginProperties/ProfilePage/StateImageTree.h"

/// The "Autostart" page: the programs that are started around a connection, below the phases that they start in.
class AutostartDialog : public ProfileDataDialog {
 public:
  AutostartDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow);

 protected:
  int SetWindowControls() override;
  int OnInitDialog(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;
  int OnNotify(uint64_t controlId, int64_t record) override;

 private:
  using Record = std::shared_ptr<AutoStartItem>;

  void LoadEntries();
  void FillTree();
  void SelectRemembered();
  void ScrollTo(size_t topLine) const;
  void ShowSelection() const;
  void OnSelected(HTREEITEM item);

  std::optional<size_t> SelectedPlace() const;
  std::optional<size_t> SelectedEntry() const;
  std::optional<size_t> SelectedModifiable() const;
  bool Edit(const Record& record) const;
  void Add();
  void Change();
  void Remove();
  void Move(void (*move)(const AutostartList& list, size_t place));

  StateImageTree tree_;
  AutostartList entries_;
  std::vector<HTREEITEM> items_;  // of the entries, in their order
  Record selected_;               // also when it is not shown any more
  bool isRead_ = true;
  bool isFilling_ = false;
};
