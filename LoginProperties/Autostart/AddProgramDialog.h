#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "LoginProperties/Autostart/AdvancedOptions.h"
#include "LoginProperties/Autostart/EntryTexts.h"
#include "WaylineDll/AutoStartItem.h"
#include "WaylineDll/BaseDialog.h"
#include "WaylineDll/Program.h"

/// The dialog "Configure an object to autostart", in which the user edits an entry of an autostart list. It offers the
/// phases of the list that the sheet shows.
class AddProgramDialog : public BaseDialog {
 public:
  /// `item` changes when the user presses OK, and only then; its change state stays as it is.
  AddProgramDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow,
                   std::shared_ptr<AutoStartItem> item);

 protected:
  int SetWindowControls() override;
  int ReadWindowControls() override;

  /// Tells the user when there is no name or no program.
  int ValidateWindowControls() override;

  int OnInitDialog(int64_t parameter) override;
  int OnOk(int64_t parameter) override;
  int OnHelp(int64_t parameter) override;
  int OnCommand(uint64_t command, int64_t control) override;

 private:
  HWND Control(int id) const;
  int SelectedIndex(int combo) const;
  EntryTexts ReadTexts() const;
  void DisableLocked() const;
  void LimitTexts() const;
  void FillNames() const;
  void FillPhases() const;
  void ShowTexts() const;
  void ShowDelays() const;
  void EnableTest() const;
  int Refuse(unsigned message, int field) const;
  void FoldAdvancedOptions();
  void TakeProgram() const;
  void TakeDelay();
  void StoreIndex(int combo, int32_t& index) const;
  void Browse() const;

  std::shared_ptr<AutoStartItem> item_;
  AutoStartItem::Fields edited_;
  std::wstring registryDirectory_;  // shown while the entry has none of its own
  std::vector<Program> programs_;
  AdvancedOptions advancedOptions_;
};
