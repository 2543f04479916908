#pragma once

#include <functional>
#include <memory>

#include "Database/Profiles/Profile.h"
#include "WaylineDll/ConfigSetting.h"
#include "WaylineDll/PropPageDialog.h"

/// Base of the sheet's pages. Each shows one login profile at a time: the current profile of the shared context, so
/// that choosing another one on a page chooses it for all pages.
class ProfileDataDialog : public PropPageDialog {
 public:
  using PropPageDialog::PropPageDialog;

 protected:
  /// Refills the selector and selects the current profile in it.
  int SetWindowControls() override;

  /// Takes the handles of the controls that the pages have in common.
  int OnInitDialog(int64_t parameter) override;

  /// Makes the profile that is chosen in a selector the current profile of all pages.
  static void SelectProfileFromCombo(HWND combo);

  /// Whether the administrator's policy resets the page of this name to the defaults. Holding Shift and Ctrl suspends
  /// the policy.
  static bool IsOverrideDisabled(const wchar_t* pageName);

  /// Stores in a profile whether a page follows the defaults.
  using SetFlag = const std::function<void(Profile&, bool)>&;

  /// Resets the current profile to the defaults of a page when the administrator's policy for it holds. The check box
  /// is enabled, not disabled: the policy undoes the choice whenever the page is created, it does not lock it. Returns
  /// whether the policy holds.
  bool ApplyOverridePolicy(const wchar_t* pageName, SetFlag followDefaults);

  /// Shows in the check box and by enabling what follows it whether the page follows the defaults.
  void ShowOverride(bool followsDefaults);

  /// The user clicked the check box: stores its state in the current profile and refreshes the page.
  int OnOverrideClicked(SetFlag followDefaults);

  /// The user chose another profile in the selector: makes it current and refreshes the page.
  int OnProfileSelected();

  /// Answers the sheet's notifications that all pages treat alike: shows the page when it is activated, keeps it in
  /// front while its validation fails, opens its help over `helpParent`. Returns the result for the sheet.
  int OnSheetNotification(int64_t record, uint32_t helpTopic, HWND helpParent);

  /// The current profile's proxy configurations. The client library is asked once per profile; what it answers, also
  /// null, is kept in the context. Null without a current profile.
  static std::shared_ptr<ConfigSetting> GetCurrentAutoConfig();
  static std::shared_ptr<ConfigSetting> GetCurrentManualConfig();

  HWND profileCombo = nullptr;
  HWND overrideCheck = nullptr;  // on a page without that box: the control that bears its id
};
