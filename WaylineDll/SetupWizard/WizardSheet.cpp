#include "WaylineDll/SetupWizard/WizardSheet.h"

#include <commctrl.h>
#include <prsht.h>

#include <memory>
#include <string>
#include <vector>

#include "NetUtilities/Module/ActivationContext.h"
#include "WaylineDll/Appearance.h"
#include "WaylineDll/Help.h"
#include "WaylineDll/SetupWizard/CopyPage.h"
#include "WaylineDll/SetupWizard/DefaultsPage.h"
#include "WaylineDll/SetupWizard/NamePage.h"
#include "WaylineDll/SetupWizard/ServerChoicePage.h"
#include "WaylineDll/SetupWizard/ServersPage.h"
#include "WaylineDll/SetupWizard/ServicePage.h"
#include "WaylineDll/SetupWizard/SummaryPage.h"
#include "WaylineDll/SetupWizard/UserIdPage.h"
#include "WaylineDll/SetupWizard/WizardStrings.h"
#include "WaylineDll/StringDb.h"

namespace {

constexpr uint32_t kHelpCommand = 15;
constexpr UINT_PTR kSubclass = 1;

std::unique_ptr<WizardPageDialog> MakePage(WizardRun& run, WizardPage page) {
  switch (page) {
    case WizardPage::Name:
      return std::make_unique<NamePage>(run);
    case WizardPage::Defaults:
      return std::make_unique<DefaultsPage>(run);
    case WizardPage::UserId:
      return std::make_unique<UserIdPage>(run);
    case WizardPage::Service:
      return std::make_unique<ServicePage>(run);
    case WizardPage::ServerChoice:
      return std::make_unique<ServerChoicePage>(run);
    case WizardPage::Servers:
    case WizardPage::Domains:
      return std::make_unique<ServersPage>(run, page);
    case WizardPage::Copy:
      return std::make_unique<CopyPage>(run);
    case WizardPage::Summary:
      break;
  }
  return std::make_unique<SummaryPage>(run);
}

unsigned CaptionOf(WizardId wizard) {
  switch (wizard) {
    case WizardId::Servers:
      return IDS_WIZARD_SERVERS_CAPTION;
    case WizardId::NewProfile:
      return IDS_WIZARD_NEW_PROFILE_CAPTION;
    case WizardId::UserIdAndService:
      break;
  }
  return IDS_WIZARD_USER_ID_AND_SERVICE_CAPTION;
}

// The texts above a page follow each other in the string table, in the order of the pages.
unsigned TitleOf(WizardPage page) {
  return IDS_WIZARD_NAME_TITLE + 2 * static_cast<unsigned>(static_cast<int>(page) - IDD_WIZARD_NAME);
}

std::wstring OwnString(unsigned id) { return LoadStringDb(ModuleId::ClientLibrary, id, false); }

// Everything that a page's description points at.
struct ShownPage {
  ShownPage(WizardRun& run, WizardPage page)
      : dialog(MakePage(run, page)), title(OwnString(TitleOf(page))), subtitle(OwnString(TitleOf(page) + 1)) {}

  std::unique_ptr<WizardPageDialog> dialog;
  std::wstring title;
  std::wstring subtitle;
};

PROPSHEETPAGEW DescribePage(const ShownPage& page, const std::wstring& caption) {
  PROPSHEETPAGEW description{};
  description.dwSize = sizeof(description);
  description.dwFlags = PSP_USECALLBACK | PSP_USETITLE | PSP_USEHEADERTITLE | PSP_USEHEADERSUBTITLE;
  description.hInstance = page.dialog->GetInstance();
  description.pszTemplate = page.dialog->GetTemplateId();
  description.pszTitle = caption.c_str();
  description.pszHeaderTitle = page.title.c_str();
  description.pszHeaderSubTitle = page.subtitle.c_str();
  description.pfnDlgProc = reinterpret_cast<DLGPROC>(BaseDialog::MyDlgProc);
  description.lParam = reinterpret_cast<LPARAM>(static_cast<BaseDialog*>(page.dialog.get()));
  description.pfnCallback = BaseDialog::MyPropPageProc;
  return description;
}

// Help is asked for on whatever has the focus, and the question climbs up to here.
LRESULT CALLBACK HelpProc(HWND sheet, UINT message, WPARAM wordParameter, LPARAM longParameter, UINT_PTR, DWORD_PTR) {
  if (message == WM_HELP) {
    DisplayHelp(WIZARD_HELP_TOPIC, sheet, kHelpCommand);
    return TRUE;
  }
  if (message == WM_NCDESTROY) RemoveWindowSubclass(sheet, HelpProc, kSubclass);
  return DefSubclassProc(sheet, message, wordParameter, longParameter);
}

int CALLBACK OnSheetEvent(HWND sheet, UINT event, LPARAM) {
  if (event != PSCB_INITIALIZED) return 0;
  SetWindowSubclass(sheet, HelpProc, kSubclass, 0);
  // The question mark asks for help on single controls, which there is none of.
  SetWindowLongPtrW(sheet, GWL_EXSTYLE, GetWindowLongPtrW(sheet, GWL_EXSTYLE) & ~LONG_PTR{WS_EX_CONTEXTHELP});
  CenterWindow(sheet, GetWindow(sheet, GW_OWNER));
  return 0;
}

}  // namespace

bool ShowWizardSheet(WizardRun& run, HWND owner) {
  const std::wstring caption = OwnString(CaptionOf(run.Wizard()));
  std::vector<ShownPage> pages;
  for (const WizardPage page : PagesOf(run.Wizard())) {
    if (page != WizardPage::Defaults || !run.Defaults().empty()) pages.emplace_back(run, page);
  }
  std::vector<PROPSHEETPAGEW> descriptions;
  descriptions.reserve(pages.size());
  for (const ShownPage& page : pages) descriptions.push_back(DescribePage(page, caption));

  PROPSHEETHEADERW header{};
  header.dwSize = sizeof(header);
  // A header without a picture.
  header.dwFlags = PSH_WIZARD97 | PSH_HEADER | PSH_USEHBMHEADER | PSH_PROPSHEETPAGE | PSH_USECALLBACK;
  header.hwndParent = owner;
  header.hInstance = GetResourceHandle(ModuleId::ClientLibrary);
  header.nPages = static_cast<UINT>(descriptions.size());
  header.ppsp = descriptions.data();
  header.pfnCallback = OnSheetEvent;
  const ActivationContext commonControls;
  return PropertySheetW(&header) >= 0;
}
