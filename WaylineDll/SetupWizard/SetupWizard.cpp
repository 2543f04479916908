#include "WaylineDll/SetupWizard.h"

#include "NetUtilities/Log.h"
#include "NetUtilities/Text/Format.h"
#include "WaylineDll/Messages.h"
#include "WaylineDll/SetupWizard/WizardRun.h"
#include "WaylineDll/SetupWizard/WizardSheet.h"
#include "WaylineDll/SetupWizard/WizardStrings.h"

namespace {

constexpr int64_t kNotFinished = 0;
constexpr int64_t kFinished = 1;

void TellAndLog(HWND owner, unsigned message, WizardId wizard, std::wstring_view what) {
  Log(LogLevel::Error, Format(L"Setup wizard {} is not shown: {}", static_cast<uint32_t>(wizard), what));
  if (message != 0) DisplayError(owner, ModuleId::ClientLibrary, message, {}, {}, {});
}

// Whether a wizard has got what it needs. What the user could not expect to be missing is told.
bool HasWhatItNeeds(HWND owner, WizardId wizard, const SetupWizardData_t* data) {
  if (PagesOf(wizard).empty() || data == nullptr) {
    TellAndLog(owner, 0, wizard, data != nullptr ? L"there is no such wizard" : L"it was given no data");
    return false;
  }
  if (!data->profile) {
    TellAndLog(owner, wizard == WizardId::NewProfile ? IDS_WIZARD_NO_PROFILE : 0, wizard, L"it was given no profile");
    return false;
  }
  if (wizard != WizardId::UserIdAndService && !data->manualConfig) {
    TellAndLog(owner, wizard == WizardId::NewProfile ? IDS_WIZARD_NO_PROFILE : IDS_WIZARD_NO_SERVERS, wizard,
               L"it was given no servers");
    return false;
  }
  return true;
}

}  // namespace

Tether::~Tether() = default;

int64_t SetupWizardTether::ShowAsSecondaryWindow(HWND parent, WizardId wizard, SetupWizardData_t* data) {
  const HWND owner = parent != nullptr ? GetAncestor(parent, GA_ROOT) : nullptr;
  if (!HasWhatItNeeds(owner, wizard, data)) return kNotFinished;
  WizardRun run(wizard, *data);
  if (!ShowWizardSheet(run, owner)) TellAndLog(owner, IDS_WIZARD_NOT_SHOWN, wizard, L"it cannot be created");
  return run.IsFinished() ? kFinished : kNotFinished;
}
