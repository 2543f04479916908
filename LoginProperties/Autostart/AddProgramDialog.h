#pragma once

#include <memory>

#include "WaylineDll/AutoStartItem.h"
#include "WaylineDll/BaseDialog.h"

/// The dialog "Configure an object to autostart", in which the user edits an entry. It is changed by OK alone.
class AddProgramDialog : public BaseDialog {
 public:
  AddProgramDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow,
                   std::shared_ptr<AutoStartItem> item);

 protected:
  int SetWindowControls() override;
  int ReadWindowControls() override;
  int OnInitDialog(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;

 private:
  std::shared_ptr<AutoStartItem> item_;
};
