#include "WaylineDll/SetupWizard/WizardPages.h"

#include <algorithm>

namespace {

std::vector<WizardPage> PagesOfNewProfile(const PageConditions& conditions) {
  std::vector<WizardPage> pages = {WizardPage::Name};
  if (conditions.hasDefaults) pages.push_back(WizardPage::Defaults);
  pages.insert(pages.end(), {WizardPage::UserId, WizardPage::Service, WizardPage::ServerChoice});
  if (conditions.setsServers) pages.insert(pages.end(), {WizardPage::Servers, WizardPage::Domains});
  pages.insert(pages.end(), {WizardPage::Copy, WizardPage::Summary});
  return pages;
}

}  // namespace

std::vector<WizardPage> PagesOf(WizardId wizard, const PageConditions& conditions) {
  switch (wizard) {
    case WizardId::Servers:
      return {WizardPage::Servers, WizardPage::Domains};
    case WizardId::NewProfile:
      return PagesOfNewProfile(conditions);
    case WizardId::UserIdAndService:
      return {WizardPage::UserId, WizardPage::Service};
  }
  return {};
}

std::optional<WizardPage> PageAfter(std::span<const WizardPage> pages, WizardPage page) {
  const auto found = std::ranges::find(pages, page);
  return found != pages.end() && found + 1 != pages.end() ? std::optional(found[1]) : std::nullopt;
}

std::optional<WizardPage> PageBefore(std::span<const WizardPage> pages, WizardPage page) {
  const auto found = std::ranges::find(pages, page);
  return found != pages.end() && found != pages.begin() ? std::optional(found[-1]) : std::nullopt;
}
