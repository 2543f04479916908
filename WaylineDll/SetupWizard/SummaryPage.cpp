#include "WaylineDll/SetupWizard/SummaryPage.h"

#include "WaylineDll/SetupWizard/DialogKeys.h"
#include "WaylineDll/SetupWizard/WizardSummary.h"
#include "WaylineDll/StringDb.h"

int SummaryPage::OnInitDialog(int64_t parameter) {
  LeaveKeysToDialog(Control(IDC_WIZARD_SUMMARY));
  return WizardPageDialog::OnInitDialog(parameter);
}

int SummaryPage::SetWindowControls() {
  std::wstring text;
  for (const SummaryLine& line : Summarize(Draft(), Run().Profiles(), Run().Services())) {
    const std::wstring item =
        line.itemText != 0 ? LoadStringDb(ModuleId::ClientLibrary, line.itemText, false) : line.item;
    if (!text.empty()) text += L"\r\n";
    text += LoadStringWithSubS(ModuleId::ClientLibrary, line.text, false, {item});
  }
  return SetDlgItemTextW(GetWindow(), IDC_WIZARD_SUMMARY, text.c_str());
}
