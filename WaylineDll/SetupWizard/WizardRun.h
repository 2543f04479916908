#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "Database/Profiles/ServiceInfo.h"
#include "WaylineDll/SetupWizard.h"
#include "WaylineDll/SetupWizard/ProfileChoices.h"
#include "WaylineDll/SetupWizard/WizardDraft.h"
#include "WaylineDll/SetupWizard/WizardPages.h"

/// One run of a wizard: what its pages have in common. The caller's records stay as they are until it is finished.
class WizardRun {
 public:
  /// `data`, which must outlive this object, has what the wizard needs.
  WizardRun(WizardId wizard, SetupWizardData_t& data);
  WizardRun(const WizardRun&) = delete;
  WizardRun& operator=(const WizardRun&) = delete;

  WizardId Wizard() const { return wizard_; }
  WizardDraft& Draft() { return draft_; }
  const ProfileTable& Profiles() const { return data_.profiles; }
  uint32_t ProfileId() const { return data_.profile->GetProfileId(); }
  const std::vector<ServiceRecord>& Services() const { return services_; }

  /// The defaults that a new profile can follow.
  const std::vector<OfferedProfile>& Defaults() const { return defaults_; }

  // The pages beside one that the user sees; nothing at the ends.
  std::optional<WizardPage> After(WizardPage page) const { return PageAfter(Pages(), page); }
  std::optional<WizardPage> Before(WizardPage page) const { return PageBefore(Pages(), page); }

  /// Hands out what the user has entered; false when that fails, which `window` tells the user.
  bool Finish(HWND window);

  bool IsFinished() const { return finished_; }

 private:
  std::vector<WizardPage> Pages() const;
  bool FinishNewProfile(HWND window);

  WizardId wizard_;
  SetupWizardData_t& data_;
  std::vector<OfferedProfile> defaults_;
  std::vector<ServiceRecord> services_;
  WizardDraft draft_;
  bool finished_ = false;
};
