#pragma once

#include <windows.h>

#include "WaylineDll/SetupWizard/WizardRun.h"

/// Shows the pages of a wizard modally over a window, which may be null, until the user finishes or cancels it. False
/// when it cannot be shown.
bool ShowWizardSheet(WizardRun& run, HWND owner);
