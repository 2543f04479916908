#pragma once

#include <string>
#include <vector>

#include "Database/Profiles/Profile.h"
#include "Database/Profiles/ServiceInfo.h"
#include "WaylineDll/SetupWizard/WizardDraft.h"

/// One line of the last page: string `text` with an item in it, which is string `itemText` unless that is 0.
struct SummaryLine {
  unsigned text;
  std::wstring item;
  unsigned itemText = 0;

  bool operator==(const SummaryLine&) const = default;
};

/// What the wizard for a new profile is about to make.
std::vector<SummaryLine> Summarize(const WizardDraft& draft, const ProfileTable& profiles,
                                   const std::vector<ServiceRecord>& services);
