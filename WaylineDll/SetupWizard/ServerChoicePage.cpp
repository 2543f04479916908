#include "WaylineDll/SetupWizard/ServerChoicePage.h"

int ServerChoicePage::SetWindowControls() {
  return CheckRadioButton(GetWindow(), IDC_WIZARD_DEFAULT_SERVERS, IDC_WIZARD_SET_SERVERS,
                          Draft().setsServers ? IDC_WIZARD_SET_SERVERS : IDC_WIZARD_DEFAULT_SERVERS);
}

int ServerChoicePage::ReadWindowControls() {
  Draft().setsServers = IsDlgButtonChecked(GetWindow(), IDC_WIZARD_SET_SERVERS) == BST_CHECKED;
  return 1;
}
