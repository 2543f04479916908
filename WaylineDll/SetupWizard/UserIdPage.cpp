#include "WaylineDll/SetupWizard/UserIdPage.h"

#include "WaylineDll/SetupWizard/FieldRules.h"
#include "WaylineDll/SetupWizard/WizardStrings.h"

std::vector<int> UserIdPage::GetFields() const { return {IDC_WIZARD_ACCOUNT, IDC_WIZARD_USER_ID}; }

WizardPageDialog::Verdict UserIdPage::Judge(int field, const std::wstring& text) const {
  const bool isAccount = field == IDC_WIZARD_ACCOUNT;
  const std::wstring before = isAccount ? Draft().GetAccountBefore() : Draft().GetUserIdBefore();
  if (text == Trimmed(before)) return {.accepted = before};
  if (isAccount) return {.accepted = text, .message = IsAccount(text) ? 0U : IDS_ACCOUNT_EXPECTED};
  return {.accepted = text, .message = IsUserId(text) ? 0U : IDS_USER_ID_EXPECTED};
}

int UserIdPage::SetWindowControls() {
  SetDlgItemTextW(GetWindow(), IDC_WIZARD_ACCOUNT, Draft().GetAccount().c_str());
  SetDlgItemTextW(GetWindow(), IDC_WIZARD_USER_ID, Draft().GetUserId().c_str());
  return 1;
}

int UserIdPage::ReadWindowControls() {
  Draft().SetAccount(Text(IDC_WIZARD_ACCOUNT));
  Draft().SetUserId(Text(IDC_WIZARD_USER_ID));
  return 1;
}
