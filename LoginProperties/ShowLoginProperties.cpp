#include "LoginProperties/ShowLoginProperties.h"

#include <prsht.h>

#include <chrono>
#include <set>
#include <utility>
#include <vector>

#include "Database/Profiles/ProfileIdManager.h"
#include "LoginProperties/Autostart/AutostartControls.h"
#include "LoginProperties/Autostart/AutostartDialog.h"
#include "LoginProperties/General/GeneralControls.h"
#include "LoginProperties/General/GeneralDialog.h"
#include "LoginProperties/PageSet.h"
#include "LoginProperties/Preferences/PreferenceControls.h"
#include "LoginProperties/Preferences/PreferenceDialog.h"
#include "LoginProperties/Proxy/ProxyControls.h"
#include "LoginProperties/Proxy/ProxyDialog.h"
#include "LoginProperties/Resources/SheetStrings.h"
#include "LoginProperties/SheetLog.h"
#include "LoginProperties/SheetPlatform.h"
#include "LoginProperties/Timeouts/TimeoutControls.h"
#include "LoginProperties/Timeouts/TimeoutDialog.h"
#include "LoginProperties/WiFiSwitching/AutoReconnectControls.h"
#include "LoginProperties/WiFiSwitching/AutoReconnectDialog.h"
#include "NetUtilities/Crash/CrashDump.h"
#include "NetUtilities/Files/WinLogonDesktop.h"
#include "NetUtilities/Logger/Logger.h"
#include "NetUtilities/Module/ActivationContext.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Text/ErrorText.h"
#include "WaylineDll/StringDb.h"

SheetPlatform sheetPlatform;

namespace {

// What the first page has before its log lines are delivered. After it the page can be seen, even on a slow machine.
constexpr auto kHeadStart = std::chrono::milliseconds(200);

// The full page description of common controls 6, with the header picture that mingw's headers leave out.
struct PageDescription : PROPSHEETPAGEW {
  HBITMAP headerPicture;
};
static_assert(sizeof(PageDescription) == 104);

// The first version of the sheet's header; later versions only add wizard pictures.
constexpr DWORD kSheetHeaderSize = 72;

PageDescription DescribePage(const PropPageDialog& page, HINSTANCE instance) {
  PageDescription description{};
  description.dwSize = sizeof(description);
  description.dwFlags = PSP_USECALLBACK | PSP_HASHELP;
  description.hInstance = instance;
  description.pszTemplate = page.GetTemplateId();
  description.pfnDlgProc = static_cast<DLGPROC>(page);
  description.lParam = static_cast<int64_t>(page);
  description.pfnCallback = static_cast<LPFNPSPCALLBACKW>(page);
  return description;
}

// The six pages. All exist in every mode, whichever of them the sheet shows.
class SheetPages {
 public:
  explicit SheetPages(HWND parent) : parent_(parent) {}

  const PropPageDialog& Get(Page page) const {
    switch (page) {
      case Page::General:
        return general_;
      case Page::Preferences:
        return preferences_;
      case Page::Autostart:
        return autostart_;
      case Page::Proxy:
        return proxy_;
      case Page::Timeouts:
        return timeouts_;
      case Page::WiFiSwitching:
        break;
    }
    return autoReconnect_;
  }

 private:
  HINSTANCE instance_ = GetResourceHandle(ModuleId::LoginProperties);
  HWND parent_;
  PreferenceDialog preferences_{instance_, MAKEINTRESOURCEW(IDD_PREFERENCE), parent_};
  GeneralDialog general_{instance_, MAKEINTRESOURCEW(IDD_GENERAL), parent_};
  TimeoutDialog timeouts_{instance_, MAKEINTRESOURCEW(IDD_TIMEOUT), parent_};
  AutostartDialog autostart_{instance_, MAKEINTRESOURCEW(IDD_AUTOSTART), parent_};
  ProxyDialog proxy_{instance_, MAKEINTRESOURCEW(IDD_PROXY), parent_};
  AutoReconnectDialog autoReconnect_{instance_, MAKEINTRESOURCEW(IDD_AUTO_RECONNECT), parent_};
};

// So that a new record of this module never gets the id of a profile that there is.
void TellUsedIds(const ProfileTable& profiles) {
  std::set<uint32_t> ids;
  for (const auto& [id, profile] : profiles) ids.insert(id);
  if (const auto manager = Singleton<ProfileIdManager>::Get()) manager->SetUsed(std::move(ids));
}

std::wstring SheetTitle() {
  const std::wstring product = GetProductDisplayName(false);
  return LoadStringWithSubS(ModuleId::LoginProperties, IDS_SHEET_TITLE, false, {product});
}

INT_PTR ShowSheet(const LoginPropertiesContext& context, std::vector<PageDescription>& pages) {
  const std::wstring title = SheetTitle();
  PROPSHEETHEADERW header{};
  header.dwSize = kSheetHeaderSize;
  header.dwFlags = PSH_PROPSHEETPAGE | PSH_NOAPPLYNOW | PSH_HASHELP;
  header.hwndParent = context.parentWindow;
  header.hInstance = context.resourceInstance;
  header.pszCaption = title.c_str();
  header.nPages = static_cast<UINT>(pages.size());
  header.nStartPage = 0;
  header.ppsp = pages.data();
  const ActivationContext commonControls;
  // Not every failure has a code: one from earlier must not be taken for it.
  SetLastError(ERROR_SUCCESS);
  const INT_PTR result = sheetPlatform.propertySheet(&header);
  if (result < 0) {
    const DWORD code = GetLastError();
    SheetLog::NotShown(context.mode, pages.size(),
                       code != ERROR_SUCCESS ? ErrorSuffix(static_cast<int32_t>(code)) : std::wstring());
  }
  return result;
}

}  // namespace

extern "C" INT_PTR ShowLoginProperties(LoginPropertiesContext* callersContext) {
  const LogSession logging(kHeadStart);
  PrepareCrashDump();
  LoginPropertiesContext& context = GetContext();
  context = *callersContext;
  TellUsedIds(context.profiles);
  SheetLog::Opened(context.mode, context.profiles, context.currentProfile);

  const SheetPages pages(context.parentWindow);
  std::vector<PageDescription> descriptions;
  for (const Page page : PagesOf(context.mode, IsRunningInWinLogonDesktop)) {
    descriptions.push_back(DescribePage(pages.Get(page), context.resourceInstance));
  }

  const INT_PTR result = ShowSheet(context, descriptions);
  if (result == kSheetConfirmed) {
    SheetLog::Confirmed(context.profiles, context.preferences, context.autoStartItems, context.manualConfigs,
                        context.autoConfigs);
    *callersContext = context;
  } else if (result != kSheetNotShown) {
    SheetLog::Cancelled();
  }
  return result;
}
