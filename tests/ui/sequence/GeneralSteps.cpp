#include "tests/ui/sequence/GeneralSteps.h"

#include <gmock/gmock.h>

#include "LoginProperties/General/GeneralControls.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/ui/RenameDriver.h"
#include "tests/ui/sequence/WizardSteps.h"

void GeneralSteps::ExpectPage() {
  const GeneralModel& page = Model().General();
  EXPECT_EQ(Sheet().Text(IDC_GENERAL_ACCOUNT), page.account);
  EXPECT_EQ(Sheet().Text(IDC_GENERAL_USER_ID), page.userId);
  EXPECT_EQ(Sheet().Text(IDC_GENERAL_SERVICE), page.service);
  EXPECT_EQ(IsWindowVisible(Sheet().Control(IDC_GENERAL_CONFIGURE_SERVERS)) != FALSE, page.showsServers);
}

// A new one, its own, or that of any profile.
std::wstring GeneralSteps::AnyName() {
  if (Random().OneIn(2)) return L"Name " + std::to_wstring(++named_);
  return Random().OneIn(2) ? Model().Chosen().name : Random().OneOf(Model().Profiles().Selectable()).second;
}

void GeneralSteps::Rename() {
  const RenameDriver dialog(Sheet());
  EXPECT_EQ(dialog.Name(), Model().Chosen().name);
  const std::wstring name = Random().OneIn(5) ? L"" : AnyName();
  scene_.story << "rename to '" << ToUtf8(name) << "'";
  dialog.Type(name);
  if (name.empty()) {
    dialog.Press(IDOK);
    EXPECT_TRUE(dialog.IsOpen());
  }
  const bool cancels = name.empty() || Random().OneIn(5);
  scene_.story << (cancels ? " cancelled; " : "; ");
  dialog.Close(cancels ? IDCANCEL : IDOK);
  if (!cancels) Model().Rename(name, scene_.stored);
}

void GeneralSteps::Remove() {
  scene_.story << "remove";
  const auto refusal = Model().Profiles().RefuseRemoval(Model().ChosenId(), scene_.stored);
  Sheet().Click(IDC_GENERAL_REMOVE);
  if (refusal) {
    scene_.story << " refused; ";
    ASSERT_EQ(Sheet().MessageBoxText(), refusal);
    return Sheet().AnswerMessageBox(IDOK);
  }
  const bool agrees = Random().OneIn(2);
  scene_.story << (agrees ? "; " : " or not; ");
  ASSERT_EQ(Sheet().MessageBoxText(), L"Do you want to remove the definitions for " + Model().Chosen().name + L"?");
  Sheet().AnswerMessageBox(agrees ? IDYES : IDNO);
  agrees ? Model().Remove(scene_.stored) : Model().Show(SheetPage::General, scene_.stored);
}

void GeneralSteps::ConfigureNetwork() {
  scene_.story << "user ID and service: ";
  WizardModel entries = Model().OpenNetworkWizard();
  Sheet().Click(IDC_GENERAL_CONFIGURE_NETWORK);
  if (WizardSteps(scene_, other_, entries).Walk()) Model().ConfigureNetwork(entries, scene_.stored);
}

void GeneralSteps::ConfigureServers() {
  if (!Model().General().showsServers) return;
  scene_.story << "servers: ";
  WizardModel entries = Model().OpenServersWizard(scene_.stored);
  Sheet().Click(IDC_GENERAL_CONFIGURE_SERVERS);
  if (WizardSteps(scene_, other_, entries).Walk()) Model().ConfigureServers(entries, scene_.stored);
}

void GeneralSteps::AddNew() {
  WizardModel entries = Model().OpenNewWizard(scene_.stored);
  scene_.story << "new " << entries.id << ": ";
  Sheet().Click(IDC_GENERAL_NEW);
  if (WizardSteps(scene_, other_, entries).Walk()) Model().AddNew(entries, scene_.stored);
}
