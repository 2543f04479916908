#pragma once

#include <cstdint>

#include "Database/Profiles/Profile.h"

/// What a page tells its base about itself, so that the base can do what all pages do.
struct PageTraits {
  uint32_t helpTopic;

  // Whether the page's window owns what help brings up: for the help key, for the sheet's button. Otherwise none does.
  bool ownsHelpOfKey = false;
  bool ownsHelpOfButton = true;

  // Whether the user can choose another profile only when the page's values are valid.
  bool validatesBeforeSwitch = true;

  // What OnCommand returns for notifications of the selector that the page has no use for.
  int idleSelectorResult = 0;

  // The name of the administrator's policy that resets the page to the defaults; null where there is none.
  const wchar_t* policyName = nullptr;

  // Whether a profile follows the page's defaults; null where the page does not need to be told.
  bool (*followsDefaults)(const Profile& profile) = nullptr;

  // Makes a profile follow the page's defaults, or not; null on a page without "Override defaults".
  void (*followDefaults)(Profile& profile, bool follow) = nullptr;
};
