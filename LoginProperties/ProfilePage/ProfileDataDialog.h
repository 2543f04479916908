#pragma once

#include <memory>

#include "LoginProperties/ProfilePage/PageTraits.h"
#include "LoginProperties/ProfilePage/ProfileCombo.h"
#include "WaylineDll/ConfigSetting.h"
#include "WaylineDll/PropPageDialog.h"

/// Base of the sheet's pages. Each shows one login profile at a time: the current profile of the shared context, so
/// that choosing another one on a page chooses it for all pages.
class ProfileDataDialog : public PropPageDialog {
 public:
  ProfileDataDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow, const PageTraits& traits);

 protected:
  /// Brings the selector up to date: the profiles that it lists, and the current one in it.
  int SetWindowControls() override;

  /// Takes the handles of the controls that the pages have in common.
  int OnInitDialog(int64_t parameter) override;

  /// Opens the page's help.
  int OnHelp(int64_t parameter) override;

  /// Sees to the selector and to "Override defaults".
  int OnCommand(uint64_t command, int64_t control) override;

  /// Answers the sheet: shows the page when it is activated, keeps it in front while its validation fails, opens its
  /// help.
  int OnNotify(uint64_t controlId, int64_t record) override;

  /// Makes the profile that is chosen in a selector the current profile of all pages.
  static void SelectProfileFromCombo(HWND combo);

  /// Whether the administrator's policy resets the page of this name to the defaults. Holding Shift and Ctrl suspends
  /// the policy.
  static bool IsOverrideDisabled(const wchar_t* pageName);

  /// Resets the current profile to the page's defaults when the administrator's policy for it holds. Returns whether
  /// the policy holds; what becomes of the check box is the page's own.
  bool ApplyOverridePolicy();

  /// Whether the page shows the defaults: the current profile follows them, or there is none.
  bool FollowsDefaults() const;

  /// Shows in the check box and by enabling what follows it whether the page follows the defaults.
  void ShowOverride();

  /// Whether a dialog, a wizard or a question stands over the sheet. No command begins under it.
  bool IsUnderDialog() const;

  /// The current profile's proxy configurations. The client library is asked once per profile; what it answers, also
  /// null, is kept in the context. Null without a current profile.
  static std::shared_ptr<ConfigSetting> GetCurrentAutoConfig();
  static std::shared_ptr<ConfigSetting> GetCurrentManualConfig();

  HWND profileCombo = nullptr;
  HWND overrideCheck = nullptr;  // on a page without that box: the control that bears its id

 private:
  int OnProfileChosen();
  int OnOverrideClicked();
  void OpenHelp(bool ownsIt) const;

  PageTraits traits_;
  ProfileCombo selector_;
};
