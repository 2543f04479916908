#include "WaylineDll/SetupWizard/DefaultsPage.h"

#include "WaylineDll/SetupWizard/ListItems.h"
#include "WaylineDll/SetupWizard/WizardStrings.h"

std::vector<int> DefaultsPage::GetFields() const { return {IDC_WIZARD_DEFAULTS}; }

WizardPageDialog::Verdict DefaultsPage::Judge(int field, const std::wstring&) const {
  return {.message = SelectedListItem(Control(field)) ? 0U : IDS_DEFAULTS_EXPECTED};
}

int DefaultsPage::OnInitDialog(int64_t parameter) {
  for (const OfferedProfile& defaults : Run().Defaults()) {
    AddListItem(Control(IDC_WIZARD_DEFAULTS), defaults.name, defaults.id);
  }
  return WizardPageDialog::OnInitDialog(parameter);
}

int DefaultsPage::SetWindowControls() {
  SelectListItem(Control(IDC_WIZARD_DEFAULTS), Draft().GetDefaults());
  return 1;
}

int DefaultsPage::ReadWindowControls() {
  if (const auto defaults = SelectedListItem(Control(IDC_WIZARD_DEFAULTS))) Draft().SetDefaults(*defaults);
  return 1;
}
