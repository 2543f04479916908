#pragma once

#include <optional>
#include <span>
#include <vector>

#include "WaylineDll/SetupWizard/WizardControls.h"
#include "WaylineDll/WizardId.h"

/// The pages of the wizards, under the numbers of their templates.
enum class WizardPage : int {
  Name = IDD_WIZARD_NAME,
  Defaults = IDD_WIZARD_DEFAULTS,
  UserId = IDD_WIZARD_USER_ID,
  Service = IDD_WIZARD_SERVICE,
  ServerChoice = IDD_WIZARD_SERVER_CHOICE,
  Servers = IDD_WIZARD_SERVERS,
  Domains = IDD_WIZARD_DOMAINS,
  Copy = IDD_WIZARD_COPY,
  Summary = IDD_WIZARD_SUMMARY,
};

/// What decides which pages the user sees.
struct PageConditions {
  bool hasDefaults = true;  // there are defaults to choose from
  bool setsServers = true;  // the user wants to set servers
};

/// The pages in the order in which the user sees them; none for an unknown wizard.
std::vector<WizardPage> PagesOf(WizardId wizard, const PageConditions& conditions = {});

/// The page behind a page, and the one before it; nothing at the ends.
std::optional<WizardPage> PageAfter(std::span<const WizardPage> pages, WizardPage page);
std::optional<WizardPage> PageBefore(std::span<const WizardPage> pages, WizardPage page);
