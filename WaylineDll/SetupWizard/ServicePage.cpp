#include "WaylineDll/SetupWizard/ServicePage.h"

#include "WaylineDll/SetupWizard/ListItems.h"
#include "WaylineDll/SetupWizard/WizardStrings.h"
#include "WaylineDll/StringDb.h"

std::vector<int> ServicePage::GetFields() const { return {IDC_WIZARD_SERVICE}; }

WizardPageDialog::Verdict ServicePage::Judge(int field, const std::wstring&) const {
  return {.accepted = {}, .message = touched_ && !SelectedListItem(Control(field)) ? IDS_SERVICE_EXPECTED : 0U};
}

int ServicePage::OnInitDialog(int64_t parameter) {
  for (const ServiceRecord& service : Run().Services()) {
    AddListItem(Control(IDC_WIZARD_SERVICE), service.displayText, static_cast<uint32_t>(service.serviceId));
  }
  if (Run().Services().empty()) {
    const std::wstring hint = LoadStringDb(ModuleId::ClientLibrary, IDS_SERVICES_UNREADABLE, false);
    SetDlgItemTextW(GetWindow(), IDC_WIZARD_SERVICE_HINT, hint.c_str());
  }
  return WizardPageDialog::OnInitDialog(parameter);
}

int ServicePage::SetWindowControls() {
  SelectListItem(Control(IDC_WIZARD_SERVICE), ServiceInForce(Draft().GetLinkService()));
  touched_ = false;
  return 1;
}

int ServicePage::ReadWindowControls() {
  if (const auto service = SelectedListItem(Control(IDC_WIZARD_SERVICE))) Draft().SetService(*service);
  return 1;
}

int ServicePage::OnCommand(uint64_t command, int64_t control) {
  const int notification = HIWORD(command);
  if (LOWORD(command) == IDC_WIZARD_SERVICE && (notification == LBN_SELCHANGE || notification == LBN_SELCANCEL)) {
    touched_ = true;
  }
  return WizardPageDialog::OnCommand(command, control);
}
