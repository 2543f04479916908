#include "WaylineDll/SetupWizard/NamePage.h"

#include "WaylineDll/SetupWizard/ProfileNameRules.h"
#include "WaylineDll/SetupWizard/WizardStrings.h"

namespace {

unsigned MessageOf(NameProblem problem) {
  switch (problem) {
    case NameProblem::None:
      return 0;
    case NameProblem::Empty:
      return IDS_NAME_EXPECTED;
    case NameProblem::TooLong:
      return IDS_NAME_TOO_LONG;
    case NameProblem::ControlCharacter:
      return IDS_NAME_HAS_CONTROL_CHARACTER;
    case NameProblem::Taken:
      return IDS_NAME_TAKEN;
    case NameProblem::TakenByHidden:
      break;
  }
  return IDS_NAME_TAKEN_BY_HIDDEN;
}

}  // namespace

std::vector<int> NamePage::GetFields() const { return {IDC_WIZARD_NAME}; }

WizardPageDialog::Verdict NamePage::Judge(int, const std::wstring& text) const {
  return {.accepted = text,
          .message = MessageOf(CheckProfileName(text, Run().ProfileId(), Run().Profiles())),
          .messageItem = text};
}

int NamePage::SetWindowControls() { return SetDlgItemTextW(GetWindow(), IDC_WIZARD_NAME, Draft().name.c_str()); }

int NamePage::ReadWindowControls() {
  Draft().name = Text(IDC_WIZARD_NAME);
  return 1;
}
